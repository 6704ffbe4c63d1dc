// cowlinfo and what only Linux has: devices and pipes, which it neither waits for nor reads without
// end, and sessions without a temporary folder.

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "platform/posix/posixgate.h"
#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;

class CowlinfoDevices : public testing::Test {
 protected:
  tests::ChildResult run(const std::vector<std::string>& arguments) {
    // As a session on Linux begins, which names no temporary folder.
    return tests::runChild({tests::stageDir() / "cowlinfo",
                            arguments,
                            {{"TEMP", std::nullopt}, {"TMP", std::nullopt}},
                            folder_.path(),
                            20});
  }
  // Through a shell, which leads the output to a file.
  tests::ChildResult runTo(const std::string& output, const std::string& argument) {
    const std::string program = (tests::stageDir() / "cowlinfo").string();
    return tests::runChild({"/bin/sh",
                            {"-c", "exec \"$0\" \"$1\" > \"$2\"", program, argument, output},
                            {},
                            folder_.path(),
                            20});
  }

  tests::TempFolder folder_;
};

TEST_F(CowlinfoDevices, APipeThatNobodyWritesToIsRefusedAtOnce) {
  ASSERT_EQ(mkfifo(folder_.file("pipe.xyz").c_str(), 0600), 0);
  for (const char* const kind : {"--points", "--model", "--settings", "--description", "--"}) {
    const tests::ChildResult result = run({kind, "pipe.xyz"});
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors, "cowlinfo: pipe.xyz: is no plain file\n");
  }
}

TEST_F(CowlinfoDevices, NothingIsMadeWhereNoTemporaryFolderIsNamed) {
  folder_.write("in.xyz", "1 2 3\n");
  EXPECT_EQ(run({"in.xyz"}).exitCode, 0);
  const fs::directory_iterator entries(folder_.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(CowlinfoDevices, AnEndlessDeviceIsRefusedAtOnce) {
  fs::create_symlink("/dev/zero", folder_.file("a.iniml"));
  EXPECT_EQ(run({"a.iniml"}).errors, "cowlinfo: a.iniml: is no plain file\n");
}

TEST_F(CowlinfoDevices, OutputThatIsNotTakenIsSaid) {
  folder_.write("in.xyz", "1 2 3\n");
  for (const char* const argument : {"in.xyz", "--help", "--version"}) {
    const tests::ChildResult result = runTo("/dev/full", argument);
    EXPECT_EQ(result.exitCode, 2) << argument;
    EXPECT_EQ(result.errors, "cowlinfo: standard output: No space left on device\n") << argument;
    EXPECT_EQ(runTo("/dev/null", argument).exitCode, 0) << argument;
  }
}

}  // namespace
