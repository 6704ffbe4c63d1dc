#include "platform/filestatus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

class FileStatuses : public testing::Test {
 protected:
  std::u16string text(const std::filesystem::path& name) const {
    return tests::textOf(folder_.file(name));
  }
  tests::TempFolder folder_;
};

TEST_F(FileStatuses, AFileHasASizeAndATime) {
  using std::chrono::system_clock;
  const auto now =
      std::chrono::duration_cast<std::chrono::seconds>(system_clock::now().time_since_epoch())
          .count();
  folder_.write("a", "12345");
  platform::FileStatus status = {};
  ASSERT_TRUE(platform::fileStatus(text("a"), status));
  EXPECT_EQ(status.size, 5);
  EXPECT_FALSE(status.isDirectory);
  EXPECT_GE(status.modified, now - 5);
  EXPECT_LE(status.modified, now + 600);
}

TEST_F(FileStatuses, TheTimeIsThatOfTheLastChange) {
  using namespace std::chrono;
  folder_.write("a", "");
  const auto changed = std::filesystem::last_write_time(folder_.file("a"));
  std::filesystem::last_write_time(folder_.file("a"), changed - hours(24 * 400));
  platform::FileStatus status = {};
  ASSERT_TRUE(platform::fileStatus(text("a"), status));
  const auto ago = system_clock::now() - system_clock::time_point(seconds(status.modified));
  EXPECT_GE(ago, hours(24 * 400) - hours(1));
  EXPECT_LE(ago, hours(24 * 400) + hours(1));
}

TEST_F(FileStatuses, ADirectoryIsTold) {
  std::filesystem::create_directory(folder_.file("d"));
  platform::FileStatus status = {};
  ASSERT_TRUE(platform::fileStatus(text("d"), status));
  EXPECT_TRUE(status.isDirectory);
}

TEST_F(FileStatuses, AnAbsentFileStoresNothing) {
  platform::FileStatus status = {7, 8, true};
  EXPECT_FALSE(platform::fileStatus(text("absent"), status));
  EXPECT_FALSE(platform::fileStatus(u"", status));
  EXPECT_EQ(status.size, 7);
  EXPECT_EQ(status.modified, 8);
}

TEST_F(FileStatuses, OneFileIsKnownByAllItsNames) {
  folder_.write("a", "x");
  folder_.write("b", "x");
  folder_.write("d/c", "x");
  EXPECT_TRUE(platform::isSameFile(text("a"), text("a")));
  EXPECT_TRUE(platform::isSameFile(text("a"), text("d") + u"\\..\\a"));
  EXPECT_TRUE(platform::isSameFile(text("d"), text("d") + u"\\."));
  EXPECT_FALSE(platform::isSameFile(text("a"), text("b")));
  EXPECT_FALSE(platform::isSameFile(text("absent"), text("absent")));
  EXPECT_FALSE(platform::isSameFile(text("a"), text("absent")));
}

TEST_F(FileStatuses, AccessAsksForExistenceReadingAndWriting) {
  folder_.write("a", "x");
  for (const int access : {0, 2, 4, 6}) {
    EXPECT_TRUE(platform::pathAllows(text("a"), access)) << access;
    EXPECT_FALSE(platform::pathAllows(text("absent"), access)) << access;
    EXPECT_FALSE(platform::pathAllows(u"", access)) << access;
  }
  EXPECT_TRUE(platform::pathAllows(tests::textOf(folder_.path()), 4));
}

TEST_F(FileStatuses, AReadOnlyFileMayBeReadAlone) {
  const auto file = folder_.write("a", "x");
  std::filesystem::permissions(file,
                               std::filesystem::perms::owner_write |
                                   std::filesystem::perms::group_write |
                                   std::filesystem::perms::others_write,
                               std::filesystem::perm_options::remove);
  EXPECT_TRUE(platform::pathAllows(text("a"), platform::accessRead));
  // One user may write it all the same and another may not; nobody is promised too much.
  const bool allowed = platform::pathAllows(text("a"), platform::accessWrite);
  std::error_code error;
  std::filesystem::resize_file(file, 0, error);
  EXPECT_TRUE(!allowed || !error);
  std::filesystem::permissions(file, std::filesystem::perms::owner_write,
                               std::filesystem::perm_options::add);
}

}  // namespace
