#include "platform/systemerror.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

class SystemErrorTest : public testing::Test {
 protected:
  // What the system says of a name that cannot be opened for writing.
  std::u16string refusalOf(const char* name) {
    platform::clearSystemError();
    EXPECT_EQ(platform::openFile(tests::textOf(folder_.file(name)), "wb"), nullptr);
    return platform::systemErrorText();
  }
  tests::TempFolder folder_;
};

TEST_F(SystemErrorTest, ACallThatFailsTellsWhyInOneLine) {
  const std::u16string text = refusalOf("absent/a");
  ASSERT_FALSE(text.empty());
  EXPECT_EQ(text.find_first_of(u"\r\n"), text.npos);
  EXPECT_NE(text.back(), u'.');
}

TEST_F(SystemErrorTest, DifferentFailuresHaveDifferentReasons) {
  std::filesystem::create_directory(folder_.file("folder"));
  const std::u16string ofFolder = refusalOf("folder");
  EXPECT_FALSE(ofFolder.empty());
  EXPECT_NE(ofFolder, refusalOf("absent/a"));
}

TEST_F(SystemErrorTest, NothingIsToldWhereNothingFailed) {
  refusalOf("absent/a");
  platform::clearSystemError();
  EXPECT_EQ(platform::systemErrorText(), u"");
  EXPECT_TRUE(platform::pathExists(tests::textOf(folder_.path())));
  EXPECT_EQ(platform::systemErrorText(), u"");
}

}  // namespace
