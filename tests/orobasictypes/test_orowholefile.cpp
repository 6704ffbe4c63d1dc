#include "orobasictypes/orowholefile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "orobasictypes/oropath.h"
#include "platform/filestatus.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

class OroWholeFileTest : public testing::Test {
 protected:
  OroPath path(const char* name) {
    return OroPath(OroString(folder_.file(name).u16string().c_str()));
  }
  int entries() {
    int count = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(folder_.path())) {
      ++count;
    }
    return count;
  }
  tests::TempFolder folder_;
  OroWholeFile file_;
};

TEST_F(OroWholeFileTest, TheTargetHoldsTheContentOnlyAfterTheCommit) {
  folder_.write("a", "old");
  ASSERT_TRUE(file_.open(path("a")));
  EXPECT_TRUE(file_.write("new", 3));
  EXPECT_EQ(folder_.read("a"), "old");
  EXPECT_TRUE(file_.commit());
  EXPECT_EQ(folder_.read("a"), "new");
  EXPECT_EQ(entries(), 1);
}

TEST_F(OroWholeFileTest, WithoutACommitNothingChangesAndNothingIsLeft) {
  folder_.write("a", "old");
  {
    OroWholeFile dropped;
    ASSERT_TRUE(dropped.open(path("a")));
    dropped.write("new", 3);
    EXPECT_EQ(entries(), 2);
  }
  EXPECT_EQ(folder_.read("a"), "old");
  EXPECT_EQ(entries(), 1);
}

TEST_F(OroWholeFileTest, DiscardBeginsAnew) {
  ASSERT_TRUE(file_.open(path("a")));
  file_.write("x", 1);
  file_.discard();
  EXPECT_FALSE(file_.write("y", 1));
  EXPECT_FALSE(file_.commit());
  EXPECT_EQ(entries(), 0);
  ASSERT_TRUE(file_.open(path("b")));
  file_.write("z", 1);
  EXPECT_TRUE(file_.commit());
  EXPECT_EQ(folder_.read("b"), "z");
}

TEST_F(OroWholeFileTest, AFolderAnAbsentFolderAndAnEmptyNameDoNotOpen) {
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_FALSE(file_.open(path("folder")));
  EXPECT_FALSE(file_.open(path("absent/a")));
  EXPECT_FALSE(file_.open(OroPath()));
  EXPECT_EQ(entries(), 1);
}

TEST_F(OroWholeFileTest, ARefusalHasAReasonAndASuccessHasNone) {
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_TRUE(file_.reason().isEmpty());
  EXPECT_FALSE(file_.open(path("folder")));
  const OroString ofFolder = file_.reason();
  EXPECT_FALSE(ofFolder.isEmpty());
  EXPECT_FALSE(file_.open(path("absent/a")));
  EXPECT_FALSE(file_.reason().isEmpty());
  EXPECT_FALSE(file_.reason() == ofFolder);
  ASSERT_TRUE(file_.open(path("a")));
  EXPECT_TRUE(file_.commit());
  EXPECT_TRUE(file_.reason().isEmpty());
}

TEST_F(OroWholeFileTest, ATargetThatBecomesAFolderIsTheReasonAndNothingIsLeft) {
  ASSERT_TRUE(file_.open(path("a")));
  file_.write("new", 3);
  std::filesystem::create_directory(folder_.file("a"));
  EXPECT_FALSE(file_.commit());
  EXPECT_FALSE(file_.reason().isEmpty());
  EXPECT_EQ(entries(), 1);
}

TEST_F(OroWholeFileTest, AfterAFullDiskTheTargetIsAsItWas) {
  folder_.write("a", "old");
  ASSERT_TRUE(file_.open(path("a")));
  {
    tests::TestDisk disk;
    disk.refuseFrom(1, 2);
    EXPECT_TRUE(file_.write("new", 3));
    EXPECT_FALSE(file_.write("more", 4));
  }
  EXPECT_FALSE(file_.write("again", 5)) << "a file with a gap is no file";
  EXPECT_FALSE(file_.commit());
  EXPECT_EQ(folder_.read("a"), "old");
  EXPECT_EQ(entries(), 1);
}

// The administrator of a Linux system may write it all the same.
TEST_F(OroWholeFileTest, AFileThatIsOnlyToBeReadStaysAsItWas) {
  namespace fs = std::filesystem;
  constexpr fs::perms kWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  fs::permissions(folder_.write("a", "old"), kWrite, fs::perm_options::remove);
  const bool mayWrite = platform::pathAllows(path("a").wideText(), platform::accessWrite);
  const bool done = file_.open(path("a")) && file_.write("new", 3) && file_.commit();
  EXPECT_EQ(done, mayWrite);
  EXPECT_EQ(file_.reason().isEmpty(), mayWrite);
  EXPECT_EQ(folder_.read("a"), mayWrite ? "new" : "old");
  EXPECT_EQ(entries(), 1);
  fs::permissions(folder_.file("a"), fs::perms::owner_write, fs::perm_options::add);
}

TEST_F(OroWholeFileTest, AnEmptyContentMakesAnEmptyFile) {
  ASSERT_TRUE(file_.open(path("a")));
  EXPECT_TRUE(file_.commit());
  EXPECT_EQ(folder_.read("a"), "");
}

}  // namespace
