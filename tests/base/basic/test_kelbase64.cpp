#include "base/basic/kelbase64.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace {

std::string encoded(const std::string& data) { return kelBase64Encode(data.data(), data.size()); }

std::string decoded(const std::u16string& text) {
  const auto data = kelBase64Decode(text);
  return std::string(data.begin(), data.end());
}

TEST(Base64, EncodesWithTheStandardAlphabet) {
  EXPECT_EQ(encoded(""), "");
  EXPECT_EQ(encoded("f"), "Zg==");
  EXPECT_EQ(encoded("fo"), "Zm8=");
  EXPECT_EQ(encoded("foo"), "Zm9v");
  EXPECT_EQ(encoded("\xFB\xFF\xBE"), "+/++");
  EXPECT_EQ(encoded(std::string(3, '\0')), "AAAA");
}

TEST(Base64, FeedsALineBehindEach48BytesButTheLast) {
  const std::string line(64, 'A');
  EXPECT_EQ(encoded(std::string(48, '\0')), line);
  EXPECT_EQ(encoded(std::string(49, '\0')), line + "\nAA==");
  EXPECT_EQ(encoded(std::string(96, '\0')), line + "\n" + line);
  EXPECT_EQ(encoded(std::string(97, '\0')), line + "\n" + line + "\nAA==");
}

TEST(Base64, IndentsTextOfSeveralLinesAlone) {
  EXPECT_EQ(kelBase64Indent("AAAA", 3), "AAAA");
  EXPECT_EQ(kelBase64Indent("", 3), "");
  EXPECT_EQ(kelBase64Indent("A\nB", 1), "\n\t\tA\n\t\tB\n\t");
  EXPECT_EQ(kelBase64Indent("A\nB\nC", 2), "\n\t\t\tA\n\t\t\tB\n\t\t\tC\n\t\t");
}

TEST(Base64, DecodesUpToTheFirstForeignUnit) {
  EXPECT_EQ(decoded(u""), "");
  EXPECT_EQ(decoded(u"Zg=="), "f");
  EXPECT_EQ(decoded(u"Zm8="), "fo");
  EXPECT_EQ(decoded(u"Zm9v"), "foo");
  EXPECT_EQ(decoded(u"Zg==Zm9v"), "f") << "what is filled up is the end";
  EXPECT_EQ(decoded(u"Zm9v-Zm9v"), "foo");
  EXPECT_EQ(decoded(u"Zm9v\u0100Zm9v"), "foo");
  EXPECT_EQ(decoded(u"Z"), "");
  EXPECT_EQ(decoded(u"Zm"), "f");
}

TEST(Base64, DecodingSkipsWhiteSpace) { EXPECT_EQ(decoded(u"\n\t\tZm\r 9v\v\f\n\tZg"), "foof"); }

TEST(Base64, GivesAllBytesBack) {
  std::string data;
  for (int i = 0; i < 1000; ++i) {
    const std::string text = kelBase64Indent(encoded(data), 2);
    EXPECT_EQ(decoded(std::u16string(text.begin(), text.end())), data);
    data += static_cast<char>(i * 37);
  }
}

}  // namespace
