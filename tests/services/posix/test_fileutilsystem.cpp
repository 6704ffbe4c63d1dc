// The file utilities where Linux has ways of its own: folders that the user may not write to, links
// to files, names with a "\", and entries that are neither files nor directories.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "orobasictypes/iptr.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oropath.h"
#include "platform/posix/posixgate.h"
#include "services/fileutil.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

// To the system's first user no folder is read-only.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (before_ == 0 && seteuid(nobody) != 0) ADD_FAILURE();
  }
  ~AsOrdinaryUser() {
    if (before_ == 0 && seteuid(0) != 0) ADD_FAILURE();
  }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

 private:
  const uid_t before_ = geteuid();
};

class FilesOfLinux : public testing::Test {
 protected:
  OroPath path(const char* name) const { return OroPath(folder_.file(name).c_str()); }
  bool exists(const char* name) const { return std::filesystem::exists(folder_.file(name)); }
  std::vector<std::u16string> listed(const char* name, int32_t mode) {
    OroArray<OroPath> out;
    files_->listFiles(path(name), out, OroString(), 1, mode);
    std::vector<std::u16string> names;
    for (const OroPath& found : out) names.emplace_back(found.wideText());
    return names;
  }

  tests::TempFolder folder_;
  IPtr<FileUtil> files_ = new FileUtil;
};

TEST_F(FilesOfLinux, WhatIsInAReadOnlyFolderStays) {
  folder_.write("d/file", "x");
  folder_.write("d/below/file", "x");
  for (const char* name : {"d", "d/below"}) {
    using std::filesystem::perms;
    std::filesystem::permissions(folder_.file(name), perms(0555));
  }
  {
    const AsOrdinaryUser user;
    EXPECT_TRUE(files_->isFile(path("d/file")));
    EXPECT_FALSE(files_->removeFile(path("d/file")));
    EXPECT_TRUE(files_->renameFile(path("d/file"), path("d/other"))) << "true is failure";
    EXPECT_FALSE(files_->makeDirectories(path("d/new")));
    EXPECT_FALSE(files_->makeDirectories(path("d/new/deeper")));
    EXPECT_FALSE(files_->removeDirectory(path("d/below"), false));
    EXPECT_FALSE(files_->removeDirectory(path("d"), true));
    EXPECT_THAT(listed("d", 1), UnorderedElementsAre(u"file", u"below\\file"));
  }
  EXPECT_TRUE(exists("d/file"));
  EXPECT_TRUE(exists("d/below/file"));
  EXPECT_FALSE(exists("d/new"));
  for (const char* name : {"d", "d/below"}) {
    std::filesystem::permissions(folder_.file(name), std::filesystem::perms(0755));
  }
}

TEST_F(FilesOfLinux, LinksGoAndWhatTheyLeadToStays) {
  folder_.write("file", "x");
  folder_.write("outside/file", "x");
  std::filesystem::create_directory(folder_.file("d"));
  std::filesystem::create_symlink("../file", folder_.file("d/to file"));
  std::filesystem::create_symlink("nowhere", folder_.file("d/to nothing"));
  std::filesystem::create_directory_symlink("../outside", folder_.file("d/to folder"));
  EXPECT_TRUE(files_->removeDirectory(path("d"), true));
  EXPECT_FALSE(exists("d"));
  EXPECT_TRUE(exists("file"));
  EXPECT_TRUE(exists("outside/file"));
  std::filesystem::create_symlink("file", folder_.file("link"));
  EXPECT_TRUE(files_->removeFile(path("link")));
  EXPECT_FALSE(std::filesystem::is_symlink(folder_.file("link")));
  EXPECT_TRUE(exists("file"));
}

TEST_F(FilesOfLinux, ALinkToADirectoryGoesWithASeparatorAtItsEndToo) {
  folder_.write("outside/file", "x");
  for (const char* separators : {"", "/", "//"}) {
    std::filesystem::create_directory_symlink("outside", folder_.file("link"));
    const std::u16string text =
        std::u16string(path("link").wideText()) + OroString(separators).wideText();
    EXPECT_TRUE(files_->removeDirectory(OroPath(OroString(text.c_str(), nullptr)), true));
    EXPECT_FALSE(std::filesystem::is_symlink(folder_.file("link")));
    EXPECT_TRUE(exists("outside/file"));
  }
}

TEST_F(FilesOfLinux, ALinkToNothingIsThereForNoQuestionButIsNotReplaced) {
  folder_.write("file", "x");
  std::filesystem::create_symlink("nowhere", folder_.file("link"));
  EXPECT_FALSE(files_->isFile(path("link")));
  EXPECT_FALSE(files_->isDirectory(path("link")));
  EXPECT_FALSE(files_->removeDirectory(path("link"), true));
  EXPECT_TRUE(files_->renameFile(path("file"), path("link"))) << "true is failure";
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.file("link")));
}

TEST_F(FilesOfLinux, EntriesOfOtherKindsAreListedWithModeFourAlone) {
  folder_.write("d/file", "x");
  ASSERT_EQ(mkfifo(folder_.file("d/pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("nowhere", folder_.file("d/link"));
  std::filesystem::create_symlink("pipe", folder_.file("d/linked pipe"));
  EXPECT_THAT(listed("d", 3), ElementsAre(u"file"));
  EXPECT_THAT(listed("d", 4), UnorderedElementsAre(u"file", u"pipe", u"link", u"linked pipe"));
}

// Such a name would be taken for a path, here one that leads out of the folder.
TEST_F(FilesOfLinux, NamesWithABackslashAreNotMistakenForPaths) {
  folder_.write("victim", "x");
  folder_.write("d/..\\victim", "x");
  folder_.write("d/file", "x");
  EXPECT_THAT(listed("d", 4), ElementsAre(u"file"));
  EXPECT_TRUE(files_->removeDirectory(path("d"), true));
  EXPECT_FALSE(exists("d"));
  EXPECT_TRUE(exists("victim"));
}

TEST_F(FilesOfLinux, ADriveLetterNamesNothing) {
  EXPECT_FALSE(files_->isDirectory(OroPath("C:")));
  EXPECT_FALSE(files_->makeDirectories(OroPath("C:\\a\\b")));
  EXPECT_FALSE(files_->removeDirectory(OroPath("C:\\a"), true));
}

TEST_F(FilesOfLinux, ATreeBeyondAllBoundsEndsInAFailure) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  constexpr int levels = 1100;  // more than are removed, and than a path can name
  int made = 0;
  while (made < levels && mkdir("deep", 0755) == 0 && chdir("deep") == 0) ++made;
  EXPECT_EQ(made, levels);
  EXPECT_FALSE(files_->removeDirectory(path("deep"), true));
  EXPECT_FALSE(listed("deep", 2).empty());
  while (made-- > 0 && chdir("..") == 0 && rmdir("deep") == 0) continue;
  std::filesystem::current_path(before);
  EXPECT_FALSE(exists("deep"));
}

}  // namespace
