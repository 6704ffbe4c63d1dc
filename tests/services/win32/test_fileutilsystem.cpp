// The file utilities where Windows has ways of its own: read-only files, drives, letters of either
// case.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "orobasictypes/iptr.h"
#include "orobasictypes/oropath.h"
#include "services/fileutil.h"
#include "tests/tempfolder.h"

namespace {

class FilesOfWindows : public testing::Test {
 protected:
  OroPath path(const char* name) const {
    return OroPath(OroString(folder_.file(name).u16string().c_str()));
  }
  bool exists(const char* name) const { return std::filesystem::exists(folder_.file(name)); }
  void setReadOnly(const char* name, bool readOnly) {
    using std::filesystem::perms;
    std::filesystem::permissions(folder_.file(name), readOnly ? perms(0444) : perms(0666));
  }

  tests::TempFolder folder_;
  IPtr<FileUtil> files_ = new FileUtil;
};

TEST_F(FilesOfWindows, AReadOnlyFileStaysAndSoDoesItsFolder) {
  folder_.write("d/kept", "x");
  folder_.write("d/gone", "x");
  setReadOnly("d/kept", true);
  EXPECT_FALSE(files_->removeFile(path("d/kept")));
  EXPECT_FALSE(files_->removeDirectory(path("d"), true));
  EXPECT_TRUE(exists("d/kept"));
  EXPECT_FALSE(exists("d/gone")) << "what can be removed goes";
  setReadOnly("d/kept", false);
  EXPECT_TRUE(files_->removeDirectory(path("d"), true));
}

TEST_F(FilesOfWindows, ADriveIsADirectory) {
  for (const char* drive : {"C:\\", "C:", "C:/"}) {
    EXPECT_TRUE(files_->isDirectory(OroPath(drive))) << drive;
    EXPECT_FALSE(files_->isFile(OroPath(drive))) << drive;
    EXPECT_FALSE(files_->makeDirectories(OroPath(drive))) << drive;
  }
  EXPECT_FALSE(files_->isDirectory(OroPath("?:\\")));
}

TEST_F(FilesOfWindows, AnotherCaseOfLettersNamesTheSameFile) {
  folder_.write("file", "x");
  folder_.write("other", "y");
  EXPECT_TRUE(files_->isFile(path("FILE")));
  EXPECT_TRUE(files_->renameFile(path("other"), path("FILE"))) << "true is failure";
  EXPECT_EQ(folder_.read("file"), "x");
}

}  // namespace
