#include "base/basic/kelxmlescape.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string bytes(std::string_view text) {
  std::string line;
  kelAppendEscaped(line, text);
  return line;
}

std::string units(std::u16string_view text) {
  std::string line;
  kelAppendEscaped(line, text);
  return line;
}

TEST(XmlEscape, ReplacesFiveCharacters) {
  EXPECT_EQ(bytes("\"     "), "&quot;     ");
  EXPECT_EQ(bytes("&    "), "&amp;    ");
  EXPECT_EQ(bytes("'     "), "&apos;     ");
  EXPECT_EQ(bytes("<   "), "&lt;   ");
  EXPECT_EQ(bytes(">   "), "&gt;   ");
  EXPECT_EQ(units(u"a&lt;b          "), "a&amp;lt;b          ");
  EXPECT_EQ(bytes(""), "");
  EXPECT_EQ(units(u""), "");
}

// The scan ends where the text ended before anything was put in.
TEST(XmlEscape, LeavesTheTailOfATextThatGrew) {
  EXPECT_EQ(bytes("a<b<c"), "a&lt;b<c");
  EXPECT_EQ(bytes("<<<<<"), "&lt;&lt;<<<");
  EXPECT_EQ(bytes("<<<<<<<<<"), "&lt;&lt;&lt;<<<<<<");
  EXPECT_EQ(bytes("<..<"), "&lt;..<");
  EXPECT_EQ(bytes("<...<"), "&lt;...<");
  EXPECT_EQ(bytes("<...<..."), "&lt;...&lt;...");
  EXPECT_EQ(bytes("..<"), "..&lt;") << "the last one is looked at before it grows";
  EXPECT_EQ(bytes("\"....\""), "&quot;....\"");
  EXPECT_EQ(bytes("\".....\"......"), "&quot;.....&quot;......");
}

TEST(XmlEscape, CountsUnitsOfWideTextAndBytesOfNarrowText) {
  EXPECT_EQ(units(u"<\u00E9\u00E9\u00E9<"), "&lt;\xC3\xA9\xC3\xA9\xC3\xA9<");
  EXPECT_EQ(units(u"<\u00E9\u00E9\u00E9<..."), "&lt;\xC3\xA9\xC3\xA9\xC3\xA9&lt;...");
  EXPECT_EQ(bytes("<\xC3\xA9\xC3\xA9<..."), "&lt;\xC3\xA9\xC3\xA9&lt;...");
}

TEST(XmlEscape, WritesEachUnitByItself) {
  EXPECT_EQ(units(u"\u20AC\uFFE9"), "\xE2\x82\xAC\xEF\xBF\xA9");
  EXPECT_EQ(units(u"\U0001F600"), "\xED\xA0\xBD\xED\xB8\x80");
}

TEST(XmlEscape, AppendsToTheLine) {
  std::string line = "x";
  kelAppendEscaped(line, std::string_view("<...."));
  kelAppendEscaped(line, std::u16string_view(u"y"));
  EXPECT_EQ(line, "x&lt;....y");
}

}  // namespace
