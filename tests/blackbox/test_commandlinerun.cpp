// The product as it is staged: one run from its arguments to its exit code, with its progress on
// every kind of sink.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/pipereader.h"
#include "tests/tempfolder.h"

namespace {

using tests::ChildResult;
using tests::plainLines;

constexpr const char* kPoints = "1.000 2.000 3.000\n4.500 5.250 6.125\n";

class CommandLineRun : public testing::Test {
 protected:
  CommandLineRun() { folder_.write("in.xyz", kPoints); }

  ChildResult run(const std::vector<std::string>& arguments) {
    return tests::runChild({tests::cowlProgram(), arguments, {}, folder_.path()});
  }
  ChildResult openAndSave(const std::string& logFile) {
    return run({"-input", "in.xyz", "-output", "out.xyz", "-logfile", logFile});
  }
  bool exists(const char* name) { return std::filesystem::exists(folder_.file(name)); }

  // The records of opening and saving a small file: commands around actions.
  void expectRecords(const std::string& text) {
    std::string commands;
    std::size_t start = 0;
    while (start < text.size()) {
      const std::size_t end = text.find('\n', start);
      ASSERT_NE(end, std::string::npos) << "no line feed at the end of: " << text;
      const std::string line = text.substr(start, end - start + 1);
      start = end + 1;
      const bool isDetail = line.find(" action=") != line.npos || line.find(" <prog ") == 0;
      if (!isDetail) commands += line;
      EXPECT_EQ(line.find("<Error"), line.npos) << line;
    }
    EXPECT_EQ(commands,
              "<log>\n<start cmd=\"Open File\"/>\n<stop cmd=\"Open File\"/>\n"
              "<start cmd=\"Save File\"/>\n<stop cmd=\"Save File\"/>\n</log>\n");
  }

  tests::TempFolder folder_;
};

TEST_F(CommandLineRun, TheInputIsNotTakenForTheLog) {
  const ChildResult result =
      run({"-input", "in.xyz", "-output", "out.xyz", "-logfile", "./in.xyz", "-exitstatus"});
  EXPECT_EQ(result.exitCode, 5);
  EXPECT_NE(result.errors.find("The options -input and -logfile name one file"), std::string::npos)
      << result.errors;
  EXPECT_EQ(folder_.read("in.xyz"), kPoints);
  EXPECT_FALSE(exists("out.xyz"));
}

TEST_F(CommandLineRun, OpensAndSavesAndEndsWithOne) {
  const ChildResult result = run({"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(plainLines(folder_.read("out.xyz")), kPoints);
}

TEST_F(CommandLineRun, RecordsOnStandardOutput) {
  const ChildResult result = openAndSave("stdout");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  expectRecords(plainLines(result.output));
}

TEST_F(CommandLineRun, GoesOnWhenNobodyReadsItsRecords) {
  for (const char* stream : {"stdout", "stderr"}) {
    for (const auto where : {tests::ChildOutput::unread, tests::ChildOutput::none}) {
      std::filesystem::remove(folder_.file("out.xyz"));
      tests::Child child{tests::cowlProgram(),
                         {"-input", "in.xyz", "-output", "out.xyz", "-logfile", stream},
                         {},
                         folder_.path()};
      (stream == std::string("stdout") ? child.outputTo : child.errorsTo) = where;
      const ChildResult result = tests::runChild(child);
      EXPECT_EQ(result.exitCode, 1) << stream;
      EXPECT_EQ(result.output + result.errors, "") << stream;
      EXPECT_EQ(plainLines(folder_.read("out.xyz")), kPoints) << "no record in it";
    }
  }
}

TEST_F(CommandLineRun, RecordsOnStandardError) {
  const ChildResult result = openAndSave("stderr");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  expectRecords(plainLines(result.errors));
}

TEST_F(CommandLineRun, RecordsInAFile) {
  const ChildResult result = openAndSave("run.log");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  expectRecords(plainLines(folder_.read("run.log")));
}

TEST_F(CommandLineRun, TheMisspeltStreamOfTheUsageIsAFile) {
  openAndSave("strerr");
  expectRecords(plainLines(folder_.read("strerr")));
}

TEST_F(CommandLineRun, RecordsInAPipe) {
  tests::PipeReader reader("commandlinerun");
  const ChildResult result = openAndSave(reader.setting());
  EXPECT_EQ(result.exitCode, 1);
  const std::u16string text = reader.readAll();
  const std::u16string begin = u"<log>\n<start cmd=\"Open File\">\n";
  const std::u16string end =
      u"<stop cmd=\"Save File\">\n<set action=\"Outcome: success\">\n</log>\n";
  ASSERT_GE(text.size(), begin.size() + end.size());
  EXPECT_EQ(text.substr(0, begin.size()), begin);
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(CommandLineRun, GoesOnWithoutThePipeItIsToWriteTo) {
  const ChildResult result = openAndSave("\\\\.\\pipe\\cowl-test-without-a-reader");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(exists("out.xyz"));
}

TEST_F(CommandLineRun, GoesOnWithoutTheLogFileItCannotOpen) {
  const ChildResult result = openAndSave("nowhere/run.log");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(exists("out.xyz"));
}

TEST_F(CommandLineRun, ARefusedOptionIsToldAndEndsWithZero) {
  const ChildResult result = run({"-input", "in.xyz", "-logfile", "run.log", "-frobnicate"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(plainLines(result.errors).substr(0, 7), "ERROR:\n");
  EXPECT_NE(result.errors.find("-frobnicate"), std::string::npos);
  EXPECT_FALSE(exists("run.log"));
  EXPECT_FALSE(exists("out.xyz"));
}

TEST_F(CommandLineRun, AMissingInputIsRecordedAndNothingHangs) {
  const ChildResult result = run({"-input", "gone.xyz", "-logfile", "stdout"});
  EXPECT_EQ(result.exitCode, 1);
  const std::string text = plainLines(result.output);
  EXPECT_NE(text.find("<Error=\""), std::string::npos) << text;
  EXPECT_NE(text.find("gone.xyz"), std::string::npos) << text;
  EXPECT_EQ(result.errors, "") << "the record takes the place of the box";
}

TEST_F(CommandLineRun, TheClassLogNamesWhatWasMade) {
  tests::runChild({tests::cowlProgram(),
                   {"-input", "in.xyz"},
                   {{"OroObjectBrokerLog", "classes"}},
                   folder_.path()});
  const std::string text = plainLines(folder_.read("classes"));
  EXPECT_NE(text.find("  ICmdLine\n"), std::string::npos) << text;
  EXPECT_NE(text.find("  IOroOpenDoc\n"), std::string::npos) << text;
}

TEST_F(CommandLineRun, WithoutArgumentsDoesNothingAndEndsWithOne) {
  const ChildResult result = run({});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
}

}  // namespace
