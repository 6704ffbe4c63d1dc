// A batch whose files go through a script.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"

namespace {

class BatchScriptRun : public testing::Test {
 protected:
  BatchScriptRun() {
    std::filesystem::create_directory(folder_.file("in"));
    for (const char* name : {"b10", "b9", "a"}) {
      folder_.write(std::string("in/") + name + ".xyz", "1 2 3\n");
    }
  }
  tests::ChildResult run(const std::string& script, std::vector<std::string> more = {}) {
    folder_.write("do.py", script);
    std::vector<std::string> arguments = {"-batch", "-inputDir", "in",    "-outputDir",
                                          "out",    "-script",   "do.py", "-exitstatus"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tests::runChild({tests::cowlProgram(), arguments, {}, folder_.path()});
  }
  bool saved(const char* name) {
    return std::filesystem::exists(folder_.file(std::filesystem::path("out") / name));
  }

  tests::TempFolder folder_;
};

TEST_F(BatchScriptRun, TheScriptRunsOnceForEachFile) {
  const tests::ChildResult result = run("with open('runs', 'a') as f: f.write('x')\n");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(folder_.read("runs"), "xxx");
  EXPECT_EQ(result.output, "Batch of 3 files: 3 saved, 0 failed\n");
}

TEST_F(BatchScriptRun, ASelectionThatIsNotKeptIsAWarningAndNoFailure) {
  for (const char* name : {"b10", "b9"}) {
    folder_.write(std::string("in/") + name + ".xyz", "1 2 3\n4 5 6\n");
  }
  const tests::ChildResult result =
      run("import cowl\ncowl.select(max=(2, 2, 3))\n", {"-logfile", "log"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, "Batch of 3 files: 3 saved, 0 failed\n");
  EXPECT_EQ(result.errors, "");
  const std::string records = folder_.read("log");
  size_t told = 0;
  for (size_t at = 0;
       (at = records.find("cannot keep a selection: 1 of 2 points", at)) != std::string::npos;
       ++at) {
    ++told;
  }
  EXPECT_EQ(told, 2u) << records;
}

TEST_F(BatchScriptRun, AFailureOfTheScriptStopsItsFileAlone) {
  const std::string script =
      "import os\n"
      "with open('runs', 'a') as f: f.write('x')\n"
      "if os.path.getsize('runs') == 2: raise ValueError('not this one')\n";
  const tests::ChildResult result = run(script, {"-logfile", "log"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output,
            "Batch of 3 files: 2 saved, 1 failed\n"
            "  b9.xyz: the script failed: ValueError: not this one\n");
  EXPECT_TRUE(saved("a.xyz"));
  EXPECT_FALSE(saved("b9.xyz"));
  EXPECT_TRUE(saved("b10.xyz"));
  const std::string records = folder_.read("log");
  EXPECT_NE(records.find("<Error=\"The script failed on the file b9.xyz: ValueError: not this one"
                         "\"/>"),
            std::string::npos)
      << records;
}

TEST_F(BatchScriptRun, AnInterruptEndsTheBatchBehindTheFileOfItsScript) {
  const std::string script =
      "import os, signal\n"
      "with open('runs', 'a') as f: f.write('x')\n"
      "if os.path.getsize('runs') == 2: os.kill(os.getpid(), signal.SIGINT)\n"
      "while os.path.getsize('runs') == 2: pass\n";
  const tests::ChildResult result = run(script);
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output,
            "Batch of 3 files, interrupted: 1 saved, 1 failed, 1 not begun\n"
            "  b9.xyz: the script failed: KeyboardInterrupt\n  b10.xyz: not begun\n");
  EXPECT_NE(result.errors.find("The batch was interrupted at the file b9.xyz. Files not begun: 1"),
            std::string::npos)
      << result.errors;
  EXPECT_EQ(folder_.read("runs"), "xx");
  EXPECT_TRUE(saved("a.xyz"));
  EXPECT_FALSE(saved("b9.xyz"));
  EXPECT_FALSE(saved("b10.xyz"));
}

TEST_F(BatchScriptRun, AnInterruptThatTheScriptDealsWithItselfIsItsOwnAffair) {
  const tests::ChildResult result =
      run("import os, signal, time\n"
          "try:\n    os.kill(os.getpid(), signal.SIGINT)\n    while True: time.sleep(1)\n"
          "except KeyboardInterrupt: pass\n");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, "Batch of 3 files: 3 saved, 0 failed\n");
}

TEST_F(BatchScriptRun, AScriptThatLeavesInOrderAfterAnInterruptEndsTheBatch) {
  const tests::ChildResult result =
      run("import os, signal, sys, time\n"
          "try:\n    os.kill(os.getpid(), signal.SIGINT)\n    while True: time.sleep(1)\n"
          "except KeyboardInterrupt: sys.exit()\n");
  EXPECT_EQ(result.exitCode, 6);
  EXPECT_EQ(result.output,
            "Batch of 3 files, interrupted: 1 saved, 0 failed, 2 not begun\n"
            "  b9.xyz: not begun\n  b10.xyz: not begun\n");
  EXPECT_TRUE(saved("a.xyz"));
}

TEST_F(BatchScriptRun, AScriptThatIsNotThereFailsForEachFile) {
  std::filesystem::create_directory(folder_.file("out"));
  const tests::ChildResult result = tests::runChild(
      {tests::cowlProgram(),
       {"-batch", "-inputDir", "in", "-outputDir", "out", "-script", "absent.py", "-exitstatus"},
       {},
       folder_.path()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.file("out")));
}

}  // namespace
