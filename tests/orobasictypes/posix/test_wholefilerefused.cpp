// What a disk refuses on Linux, for a user who may do everything as well.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <string>

#include "orobasictypes/oropath.h"
#include "orobasictypes/orowholefile.h"
#include "platform/posix/posixgate.h"
#include "tests/tempfolder.h"

namespace {

std::string reasonOf(const OroWholeFile& file) { return file.reason().toUtf8(); }

// For its life no file of this process may grow beyond so many bytes.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : signal_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    signal(SIGXFSZ, signal_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_ = {};
  void (*signal_)(int);
};

TEST(OroWholeFileRefused, AFullDeviceTellsSo) {
  OroWholeFile file;
  ASSERT_TRUE(file.open(OroPath("/dev/full")));
  EXPECT_FALSE(file.write("x", 1));
  EXPECT_FALSE(file.commit());
  EXPECT_EQ(reasonOf(file), "No space left on device");
}

TEST(OroWholeFileRefused, WhereTheFileMayNotGrowItStaysAsItWas) {
  const tests::TempFolder folder;
  const OroPath path(OroString(folder.write("a", "before").u16string().c_str()));
  const std::string bytes(5000, 'x');
  OroWholeFile file;
  ASSERT_TRUE(file.open(path));
  {
    const FileSizeLimit limit(4096);
    EXPECT_FALSE(file.write(bytes.data(), bytes.size()));
  }
  EXPECT_FALSE(file.commit());
  EXPECT_EQ(reasonOf(file), "File too large");
  EXPECT_EQ(folder.read("a"), "before");
  const std::filesystem::directory_iterator entries(folder.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

// Not even the administrator makes files there; the system's own call tells what it says of it.
TEST(OroWholeFileRefused, AFolderThatTakesNoFilesTellsWhy) {
  ASSERT_LT(::open("/proc/self/a", O_WRONLY | O_CREAT, 0600), 0);
  const std::string expected = strerror(errno);
  OroWholeFile file;
  EXPECT_FALSE(file.open(OroPath("/proc/self/a")));
  EXPECT_EQ(reasonOf(file), expected);
  EXPECT_NE(expected, "Success");
}

TEST(OroWholeFileRefused, AFolderAndAFileInThePlaceOfAFolderTellWhy) {
  const tests::TempFolder folder;
  folder.write("a", "before");
  OroWholeFile file;
  EXPECT_FALSE(file.open(OroPath(OroString(folder.path().u16string().c_str()))));
  EXPECT_EQ(reasonOf(file), "Is a directory");
  EXPECT_FALSE(file.open(OroPath(OroString(folder.file("a/b").u16string().c_str()))));
  EXPECT_EQ(reasonOf(file), "Not a directory");
  EXPECT_FALSE(file.open(OroPath(OroString(folder.file("absent/b").u16string().c_str()))));
  EXPECT_EQ(reasonOf(file), "No such file or directory");
  EXPECT_EQ(folder.read("a"), "before");
}

}  // namespace
