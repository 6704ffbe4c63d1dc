#include "platform/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

namespace {

using platform::fromSystem;
using platform::toSystem;
using platform::toUtf8Lossy;

struct Pair {
  const char* bytes;
  std::u16string text;
};

TEST(SystemText, ValidSequencesConvertBothWays) {
  const Pair rows[] = {
      {"", u""},
      {"plain", u"plain"},
      {"\x7F", u"\u007F"},
      {"\xC2\x80", u"\u0080"},
      {"\xC3\xA9", u"\u00E9"},
      {"\xDF\xBF", u"\u07FF"},
      {"\xE0\xA0\x80", u"\u0800"},
      {"\xE2\x82\xAC", u"\u20AC"},
      {"\xED\x9F\xBF", u"\uD7FF"},
      {"\xEE\x80\x80", u"\uE000"},
      {"\xEF\xBF\xBF", u"\uFFFF"},
      {"\xF0\x90\x80\x80", u"\U00010000"},
      {"\xF0\x9F\x98\x80", u"\U0001F600"},
      {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
      {"a\xF0\x9F\x98\x80z", u"a\U0001F600z"},
  };
  for (const Pair& row : rows) {
    EXPECT_EQ(fromSystem(row.bytes), row.text) << row.bytes;
    EXPECT_EQ(toSystem(row.text), row.bytes);
    EXPECT_EQ(toUtf8Lossy(row.text), row.bytes);
  }
}

TEST(SystemText, EveryCodePointSurvives) {
  for (char32_t c = 1; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::u16string text;
    if (c < 0x10000) {
      text = static_cast<char16_t>(c);
    } else {
      text = {static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)),
              static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF))};
    }
    const std::string bytes = toSystem(text);
    ASSERT_EQ(bytes.size(), c < 0x80      ? 1u
                            : c < 0x800   ? 2u
                            : c < 0x10000 ? 3u
                                          : 4u)
        << static_cast<std::uint32_t>(c);
    ASSERT_EQ(fromSystem(bytes), text) << static_cast<std::uint32_t>(c);
  }
}

TEST(SystemText, ZeroIsAnOrdinaryCharacter) {
  EXPECT_EQ(fromSystem({"a\0b", 3}), std::u16string(u"a\0b", 3));
  EXPECT_EQ(toSystem({u"a\0b", 3}), std::string("a\0b", 3));
}

TEST(SystemText, BytesOutsideUtf8BecomeLoneUnitsAndTurnBack) {
  const struct {
    const char* why;
    const char* bytes;
    std::u16string text;
  } rows[] = {
      {"continuation alone", "\x80", {0xDC80}},
      {"last continuation alone", "a\xBFz", {'a', 0xDCBF, 'z'}},
      {"overlong of two bytes", "\xC0\x80", {0xDCC0, 0xDC80}},
      {"overlong of two bytes, highest", "\xC1\xBF", {0xDCC1, 0xDCBF}},
      {"two bytes cut short", "\xC3", {0xDCC3}},
      {"two bytes interrupted", "\xC3(", {0xDCC3, '('}},
      {"overlong of three bytes", "\xE0\x9F\xBF", {0xDCE0, 0xDC9F, 0xDCBF}},
      {"three bytes cut to one", "\xE2", {0xDCE2}},
      {"three bytes cut to two", "\xE2\x82", {0xDCE2, 0xDC82}},
      {"three bytes interrupted", "\xE2\x82x", {0xDCE2, 0xDC82, 'x'}},
      {"encoded high surrogate", "\xED\xA0\x80", {0xDCED, 0xDCA0, 0xDC80}},
      {"encoded low surrogate", "\xED\xB2\x80", {0xDCED, 0xDCB2, 0xDC80}},
      {"overlong of four bytes", "\xF0\x8F\xBF\xBF", {0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF}},
      {"four bytes cut short", "\xF0\x9F\x98", {0xDCF0, 0xDC9F, 0xDC98}},
      {"above the last character", "\xF4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},
      {"lead byte F5", "\xF5\x80\x80\x80", {0xDCF5, 0xDC80, 0xDC80, 0xDC80}},
      {"five bytes", "\xF8\x88\x80\x80\x80", {0xDCF8, 0xDC88, 0xDC80, 0xDC80, 0xDC80}},
      {"FE and FF", "\xFE\xFF", {0xDCFE, 0xDCFF}},
      {"valid text behind a bad byte", "\xFF\xC3\xA9", {0xDCFF, 0x00E9}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(fromSystem(row.bytes), row.text) << row.why;
    EXPECT_EQ(toSystem(row.text), row.bytes) << row.why;
  }
}

TEST(SystemText, AnyBytesTurnBackIntoThemselves) {
  std::mt19937 random(20240611);
  // Bytes from the whole range, and bytes that often form the beginning of a sequence.
  const std::uint8_t likely[] = {0x41, 0x80, 0xBF, 0xC2, 0xC3, 0xE0, 0xE2, 0xED,
                                 0xA0, 0xB2, 0x9F, 0xF0, 0xF4, 0x8F, 0x90, 0xFF};
  for (int round = 0; round < 20000; ++round) {
    std::string bytes(random() % 12, '\0');
    for (char& byte : bytes) {
      byte = static_cast<char>(round % 2 == 0 ? random() & 0xFF : likely[random() % 16]);
    }
    ASSERT_EQ(toSystem(fromSystem(bytes)), bytes);
  }
}

TEST(SystemText, LoneSurrogatesOfOtherOriginAreReplaced) {
  const std::u16string texts[] = {{0xD800}, {0xDBFF}, {0xDC00}, {0xDC7F}, {0xDD00}, {0xDFFF}};
  for (const auto& text : texts) EXPECT_EQ(toSystem(text), "\xEF\xBF\xBD");
  EXPECT_EQ(toSystem(std::u16string{0xD800, 0xD800, 0xDC00}), "\xEF\xBF\xBD\xF0\x90\x80\x80");
}

TEST(SystemText, RecordsHoldNoLoneSurrogate) {
  EXPECT_EQ(toUtf8Lossy(std::u16string{'a', 0xDC80, 'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(toUtf8Lossy(std::u16string{0xD83D}), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8Lossy(std::u16string{0xDE00, 0xD83D}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(SystemText, PathsComeInWithBackslashes) {
  EXPECT_EQ(platform::fromSystemPath("/usr/share\xC3\xA9/x"), u"\\usr\\share\u00E9\\x");
}

TEST(SystemText, PathWithAZeroInsideNamesNothing) {
  EXPECT_EQ(platform::toSystemPath(std::u16string_view(u"a\0b", 3)), "");
}

TEST(SystemText, NarrowTextOfTheSystemKeepsAscii) {
  EXPECT_EQ(platform::fromCodePage("plain 123"), u"plain 123");
  EXPECT_EQ(platform::toCodePage(u"plain 123"), "plain 123");
  EXPECT_EQ(platform::fromCodePage(""), u"");
  EXPECT_EQ(platform::toCodePage(u""), "");
  EXPECT_EQ(platform::fromCodePage(platform::toCodePage(u"\u00E9\u00FC")), u"\u00E9\u00FC");
}

}  // namespace
