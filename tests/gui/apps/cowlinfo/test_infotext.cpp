#include "gui/apps/cowlinfo/infotext.h"

#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/orostring.h"

namespace {

TEST(InfoText, ShowsTextAsItIs) {
  EXPECT_EQ(shownText("a \"b\" \\ \xC3\xA9 \xF0\x9F\x98\x80"),
            "a \"b\" \\ \xC3\xA9 \xF0\x9F\x98\x80");
  EXPECT_EQ(shownText(OroString(u"\u00E9")), "\xC3\xA9");
  EXPECT_EQ(shownText(""), "");
}

TEST(InfoText, NoControlCharacterReachesTheTerminal) {
  EXPECT_EQ(shownText(std::string("a\x1b[2Jb\n\r\t\0c", 11)), "a\\x1b[2Jb\\x0a\\x0d\\x09\\x00c");
  EXPECT_EQ(shownText("\x7f"), "\\x7f");
  EXPECT_EQ(shownText("\xC2\x9B"
                      "31m"),
            "\\x9b31m")
      << "the one that terminals take for an escape";
  EXPECT_EQ(shownText("\xC2\xA0"), "\xC2\xA0");
}

TEST(InfoText, CutsLongTextsBetweenCharacters) {
  EXPECT_EQ(shownText("abcdef", 3), "abc...");
  EXPECT_EQ(shownText("abc", 3), "abc");
  EXPECT_EQ(shownText("a\xC3\xA9z", 2), "a...");
}

TEST(InfoText, Counts) {
  EXPECT_EQ(counted(1, "file", "files"), "1 file");
  EXPECT_EQ(counted(0, "file", "files"), "0 files");
}

}  // namespace
