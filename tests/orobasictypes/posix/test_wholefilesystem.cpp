// Whole files and what only Linux has: devices and limits that refuse a user who may do everything
// as well, links, owners and rights.

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

// Writes "new" to the file of that name.
bool replace(const tests::TempFolder& folder, const char* name) {
  OroWholeFile file;
  return file.open(OroPath(OroString(folder.file(name).u16string().c_str()))) &&
         file.write("new", 3) && file.commit();
}

TEST(OroWholeFileLinks, ALinkStaysAndWhatItLeadsToIsReplaced) {
  namespace fs = std::filesystem;
  const tests::TempFolder folder;
  fs::create_directory(folder.file("d"));
  folder.write("d/a", "old");
  fs::create_symlink("b", folder.file("d/link"));
  fs::create_symlink("a", folder.file("d/b"));
  fs::create_symlink("d/link", folder.file("near"));
  fs::create_symlink(folder.file("d/link"), folder.file("far"));
  for (const char* const name : {"d/link", "near", "far"}) {
    folder.write("d/a", "old");
    EXPECT_TRUE(replace(folder, name)) << name;
    EXPECT_TRUE(fs::is_symlink(folder.file(name)));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder.file("d/a"))));
    EXPECT_EQ(folder.read("d/a"), "new") << name;
  }
}

TEST(OroWholeFileLinks, ALinkThatLeadsNowhereGetsItsFile) {
  namespace fs = std::filesystem;
  const tests::TempFolder folder;
  fs::create_symlink("absent", folder.file("link"));
  EXPECT_TRUE(replace(folder, "link"));
  EXPECT_TRUE(fs::is_symlink(folder.file("link")));
  EXPECT_EQ(folder.read("absent"), "new");
  fs::create_symlink("no/absent", folder.file("deep"));
  EXPECT_FALSE(replace(folder, "deep"));
}

TEST(OroWholeFileLinks, ALinkToItselfEnds) {
  const tests::TempFolder folder;
  std::filesystem::create_symlink("loop", folder.file("loop"));
  EXPECT_TRUE(replace(folder, "loop"));
  EXPECT_EQ(folder.read("loop"), "new");
  const std::filesystem::directory_iterator entries(folder.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST(OroWholeFileRights, AreThoseOfTheFileBefore) {
  const tests::TempFolder folder;
  const std::string file = folder.write("a", "old").string();
  for (const mode_t rights : {mode_t{0600}, mode_t{0640}, mode_t{0666}, mode_t{0755}}) {
    ASSERT_EQ(chmod(file.c_str(), rights), 0);
    const bool other = chown(file.c_str(), 1234, 1234) == 0;  // of the administrator alone
    EXPECT_TRUE(replace(folder, "a"));
    struct stat after = {};
    ASSERT_EQ(stat(file.c_str(), &after), 0);
    EXPECT_EQ(after.st_mode & 07777, rights);
    EXPECT_EQ(after.st_uid, other ? 1234 : getuid());
    EXPECT_EQ(after.st_gid, other ? 1234 : getgid());
  }
}

}  // namespace
