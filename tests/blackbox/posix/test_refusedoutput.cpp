// Outputs that the system refuses: the record tells its reason, and what was there stays.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;

class RefusedOutput : public testing::Test {
 protected:
  RefusedOutput() { folder_.write("in.xyz", "1 2 3\n4 5 6\n"); }

  // The error that a run tells of this output.
  std::string errorOf(const std::string& output) {
    const tests::ChildResult result = tests::runChild(
        {tests::cowlProgram(),
         {"-input", "in.xyz", "-output", output, "-logfile", "stdout", "-exitstatus"},
         {},
         folder_.path()});
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitCode, 4);
    const size_t start = result.output.find("<Error=\"");
    if (start == std::string::npos) return "no error: " + result.output;
    const size_t text = start + 8;
    return result.output.substr(text, result.output.find('"', text) - text);
  }

  tests::TempFolder folder_;
};

TEST_F(RefusedOutput, AFullDevice) {
  fs::create_symlink("/dev/full", folder_.file("full.xyz"));
  EXPECT_EQ(errorOf("full.xyz"), "Cannot write the file full.xyz: No space left on device");
  EXPECT_TRUE(fs::is_symlink(folder_.file("full.xyz")));
}

// The run's own messages are short enough for the limit, which counts in half kilobytes.
TEST_F(RefusedOutput, AFileThatMayNotGrow) {
  std::string points;
  for (int i = 0; i < 2000; ++i) points += std::to_string(i) + " 2 3\n";
  folder_.write("in.xyz", points);
  folder_.write("out.xyz", "7 8 9\n");
  const tests::ChildResult result =
      tests::runChild({"/bin/sh",
                       {"-c", "ulimit -f 8; exec \"$0\" -input in.xyz -output out.xyz -exitstatus",
                        tests::cowlProgram().string()},
                       {},
                       folder_.path()});
  EXPECT_EQ(result.exitCode, 4);
  EXPECT_EQ(result.errors, "Cannot write the file out.xyz: File too large\n");
  EXPECT_EQ(folder_.read("out.xyz"), "7 8 9\n");
  const fs::directory_iterator entries(folder_.path());
  EXPECT_EQ(
      std::count_if(begin(entries), end(entries),
                    [](const fs::directory_entry& e) { return e.path().extension() == ".tmp"; }),
      0);
}

TEST_F(RefusedOutput, AFolder) {
  fs::create_directory(folder_.file("folder.xyz"));
  EXPECT_EQ(errorOf("folder.xyz"), "Cannot write the file folder.xyz: Is a directory");
  EXPECT_TRUE(fs::is_empty(folder_.file("folder.xyz")));
}

TEST_F(RefusedOutput, AFolderThatIsNotThere) {
  EXPECT_EQ(errorOf("absent/out.xyz"),
            "Cannot write the file absent/out.xyz: No such file or directory");
}

TEST_F(RefusedOutput, AFileInThePlaceOfAFolder) {
  folder_.write("old.xyz", "7 8 9\n");
  EXPECT_EQ(errorOf("old.xyz/out.xyz"), "Cannot write the file old.xyz/out.xyz: Not a directory");
  EXPECT_EQ(folder_.read("old.xyz"), "7 8 9\n");
}

}  // namespace
