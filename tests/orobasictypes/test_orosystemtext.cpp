#include "orobasictypes/orosystemtext.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "orobasictypes/oropath.h"
#include "platform/text.h"

namespace {

TEST(OroArgumentText, BringsWidenedBytesBackToTheSystemsText) {
  const std::string typed = platform::toCodePage(u"caf\u00E9.xyz");
  const OroString argument(typed.c_str());
  EXPECT_FALSE(argument == OroString(u"caf\u00E9.xyz"));
  EXPECT_TRUE(oroArgumentText(argument) == OroString(u"caf\u00E9.xyz"));
}

TEST(OroArgumentText, LeavesPlainAndWideTextAsItIs) {
  EXPECT_TRUE(oroArgumentText(OroString("-input")) == "-input");
  EXPECT_TRUE(oroArgumentText(OroString(u"\u4E2D")) == OroString(u"\u4E2D"));
  EXPECT_TRUE(oroArgumentText(OroString()).isEmpty());
}

TEST(OroShownPath, HasTheSeparatorsOfTheSystem) {
  const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
  const std::string expected = std::string("a") + separator + "b.xyz";
  EXPECT_TRUE(oroShownPath(OroPath("a/b.xyz")) == expected.c_str());
  EXPECT_TRUE(oroShownPath(OroPath(OroString(u"\u4E2D/x"))).at(0) == u'\u4E2D');
  EXPECT_TRUE(oroShownPath(OroPath()).isEmpty());
}

TEST(OroShownPath, APathThatNamesNothingHereIsShownAsItStands) {
  EXPECT_TRUE(oroShownPath(OroPath("c:/dir/x")) == "c:\\dir\\x");
}

TEST(OroWithReason, PutsTheReasonBehindTheMessage) {
  const OroString message("Cannot write a");
  EXPECT_TRUE(oroWithReason(message, OroString("It is full")) == "Cannot write a: It is full");
  EXPECT_TRUE(oroWithReason(message, OroString()) == "Cannot write a");
}

TEST(OroTerminalText, IsUtf8WithoutControlCharacters) {
  EXPECT_EQ(oroTerminalText(OroString(u"\u00E4 \u4E2D\tb\n")), "\xC3\xA4 \xE4\xB8\xAD\tb\n");
  EXPECT_EQ(oroTerminalText(OroString(u"a\x1B[31m\r\x7F\u0085\u009F\u00A0")), "a?[31m????\xC2\xA0");
  EXPECT_EQ(oroTerminalText(OroString()), "");
}

}  // namespace
