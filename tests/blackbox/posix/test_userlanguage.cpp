// The language of the system's user, which Linux tells in the environment of the process.

#include <gtest/gtest.h>

#include <string>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"

namespace {

// How a run that opens a file begins in the user's language.
std::string spoken(const std::string& locale) {
  const tests::TempFolder folder;
  folder.write("in.xyz", "1.00 2.00 3.00 4 5 6\n");
  const auto result = tests::runChild({tests::cowlProgram(),
                                       {"-input", "in.xyz", "-logfile", "stdout"},
                                       {{"LC_ALL", locale}},
                                       folder.path()});
  const size_t begin = result.output.find("<start cmd=");
  return begin == result.output.npos
             ? result.output + result.errors
             : result.output.substr(begin, result.output.find('\n', begin) - begin);
}

TEST(UserLanguage, IsSpokenWhereNoneWasChosen) {
  EXPECT_EQ(spoken("de_DE.UTF-8"),
            "<start cmd=\"Datei \xC3\xB6"
            "ffnen\"/>");
  EXPECT_EQ(spoken("de_AT"),
            "<start cmd=\"Datei \xC3\xB6"
            "ffnen\"/>");
}

TEST(UserLanguage, IsEnglishWhereItIsNotInstalled) {
  EXPECT_EQ(spoken("fr_FR.UTF-8"), "<start cmd=\"Open File\"/>");
  EXPECT_EQ(spoken("C"), "<start cmd=\"Open File\"/>");
  EXPECT_EQ(spoken("en_GB.UTF-8"), "<start cmd=\"Open File\"/>");
  EXPECT_EQ(spoken("no such locale"), "<start cmd=\"Open File\"/>");
}

}  // namespace
