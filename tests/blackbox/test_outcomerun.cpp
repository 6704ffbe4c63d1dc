// What a program around the executable learns of a run: the last record, the exit status where it
// was asked for, the lines of -verbose, and the words about a library that does not come up.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/productcopy.h"
#include "tests/tempfolder.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::ChildResult;
using tests::plainLines;

class OutcomeRun : public testing::Test {
 protected:
  OutcomeRun() {
    folder_.write("in.xyz", "1 2 3\n4 5 6\n");
    folder_.write("bad.xyz", "1 2\n");
  }

  ChildResult run(const std::vector<std::string>& arguments) {
    return tests::runChild({tests::cowlProgram(), arguments, {}, folder_.path()});
  }
  // The last record of a run, and its exit code with and without the option.
  struct Result {
    std::string record;
    std::int64_t asked;
    std::int64_t unasked;
  };
  Result resultOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"-logfile", "stdout"});
    const ChildResult plain = run(arguments);
    arguments.emplace_back("-exitstatus");
    const ChildResult asked = run(arguments);
    const std::string text = plainLines(asked.output);
    const std::string end = "\"/>\n</log>\n";
    const size_t start = text.rfind("<set action=\"");
    EXPECT_EQ(text.substr(text.size() - std::min(text.size(), end.size())), end) << text;
    const std::string record =
        start == text.npos ? text : text.substr(start + 13, text.size() - start - 13 - end.size());
    return {record, asked.exitCode, plain.exitCode};
  }
  void expectResult(const std::vector<std::string>& arguments, const char* record, int status) {
    const Result result = resultOf(arguments);
    EXPECT_EQ(result.record, record) << arguments.back();
    EXPECT_EQ(result.asked, status) << arguments.back();
    EXPECT_EQ(result.unasked, 1) << "the entry's own code";
  }

  tests::TempFolder folder_;
};

// A line that begins so, has the part in it, and ends with a time.
void expectLine(const std::string& text, const std::string& begin, const std::string& part) {
  bool found = false;
  for (size_t at = 0; at < text.size() && !found;) {
    const size_t end = std::min(text.find('\n', at), text.size());
    const std::string line = text.substr(at, end - at);
    found = line.rfind(begin, 0) == 0 && line.find(part + " in ") != line.npos && line.size() > 3 &&
            line.substr(line.size() - 3) == " ms";
    at = end + 1;
  }
  EXPECT_TRUE(found) << begin << part << " in:\n" << text;
}

int count(const std::string& text, const std::string& part) {
  int found = 0;
  for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++found;
  return found;
}

TEST_F(OutcomeRun, Success) {
  expectResult({"-input", "in.xyz", "-output", "out.xyz"}, "Outcome: success", 0);
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n4 5 6\n");
  expectResult({"-input", "in.xyz"}, "Outcome: success", 0);
}

TEST_F(OutcomeRun, AFileThatDoesNotOpen) {
  expectResult({"-input", "absent.xyz"}, "Outcome: open failed", 3);
  expectResult({"-input", "bad.xyz", "-output", "out.xyz"}, "Outcome: open failed", 3);
}

TEST_F(OutcomeRun, AFileThatIsNotSaved) {
  expectResult({"-input", "in.xyz", "-output", "absent/out.xyz"}, "Outcome: save failed", 4);
  expectResult({"-input", "in.xyz", "-output", "out.nonsense"}, "Outcome: save failed", 4);
}

TEST_F(OutcomeRun, AScriptThatFailsOrCannotRun) {
  expectResult({"-input", "in.xyz", "-script", "absent.py", "-output", "out.xyz"},
               "Outcome: script failed", 2);
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n4 5 6\n") << "saved all the same";
}

TEST_F(OutcomeRun, ARefusedCommandLine) {
  EXPECT_EQ(run({"-nonsense"}).exitCode, 0);
  EXPECT_EQ(run({"-nonsense", "-exitstatus"}).exitCode, 5);
  EXPECT_EQ(run({"-exitstatus", "-input"}).exitCode, 5);
}

TEST_F(OutcomeRun, ABatchThatCannotBegin) {
  expectResult({"-batch", "-inputDir", "absent", "-outputDir", "out"}, "Outcome: batch failed", 6);
}

TEST_F(OutcomeRun, AComponentsLibraryThatIsMissing) {
  const tests::ProductCopy product;
  product.removeLibrary("points");
  const ChildResult result = product.run(
      "cowl", {"-input", "in.xyz", "-exitstatus", "-logfile", "stdout"}, folder_.path());
  EXPECT_EQ(result.exitCode, 3);
  // At each request for one of its services, before the records begin and in them.
  EXPECT_GT(count(result.errors, "Could not load this DLL"), 1) << result.errors;
  EXPECT_EQ(count(result.output, "Could not load this DLL"), 1) << result.output;
  EXPECT_THAT(result.output, HasSubstr("There is nothing to open the file in.xyz with"));
}

// What a library still has when a copy of it broke off; the system may map it without looking.
TEST_F(OutcomeRun, AComponentsLibraryThatHasLostItsEndIsToldAndTheRunGoesOn) {
  for (const std::uintmax_t size : {0, 3, 63, 64, 500, 4096, 30000, 200000}) {
    const tests::ProductCopy product;
    product.cutLibrary("points", size);
    const ChildResult result = product.run(
        "cowl", {"-input", "in.xyz", "-output", "out.xyz", "-exitstatus"}, folder_.path());
    EXPECT_EQ(result.exitCode, 3) << size;
    const int told = count(result.errors, "Could not load this DLL");
    EXPECT_GT(told, 0) << size << result.errors;
    EXPECT_EQ(count(result.errors, "ERROR:"), told) << size << ": by the start, and not again";
    EXPECT_EQ(count(result.errors, "There is nothing to open the file in.xyz with"), 1) << size;
    EXPECT_EQ(count(result.errors, "There is nothing to save the file out.xyz with"), 1) << size;
  }
}

TEST_F(OutcomeRun, AStartThatHasLostTheEndOfItsFirstLibraryIsTold) {
  const tests::ProductCopy product;
  product.cutLibrary("initserver", 100000);
  const ChildResult result = product.run("cowl", {"-input", "in.xyz"}, folder_.path());
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(count(result.errors, "Could not load this DLL"), 1) << result.errors;
}

TEST_F(OutcomeRun, WithoutRecordsWhatFailedStandsOnStandardError) {
  const struct {
    std::vector<std::string> arguments;
    const char* text;
  } rows[] = {
      {{"-input", "bad.xyz"}, "bad.xyz, line 1: a point needs three coordinates\n"},
      {{"-input", "in.xyz", "-output", "in.nonsense"},
       "The type of the file in.nonsense cannot be saved\n"},
      {{"-batch"}, "A batch needs the options -inputDir and -outputDir\n"},
  };
  for (const auto& row : rows) {
    const ChildResult result = run(row.arguments);
    EXPECT_EQ(plainLines(result.errors), row.text);
    EXPECT_EQ(result.output, "");
    std::vector<std::string> recorded = row.arguments;
    recorded.insert(recorded.end(), {"-logfile", "log"});
    EXPECT_EQ(run(recorded).errors, "") << "the records have it";
  }
  EXPECT_EQ(run({"-input", "in.xyz", "-output", "out.xyz"}).errors, "");
}

TEST_F(OutcomeRun, VerboseTellsWhatWasLoadedFromWhereInWhatTime) {
  const ChildResult result =
      run({"-input", "in.xyz", "-output", "out.xyz", "-verbose", "-logfile", "stdout"});
  const std::string text = plainLines(result.errors);
  for (const char* library : {"initserver", "commandline", "points"}) {
    expectLine(text, "cowl: loaded: ", library);
  }
  expectLine(text, "cowl: open: ", "in.xyz");
  expectLine(text, "cowl: save: ", "out.xyz");
  EXPECT_THAT(result.output, Not(HasSubstr("cowl:"))) << "records alone";
}

TEST_F(OutcomeRun, VerboseTellsTheLibrariesOfARunWithoutSteps) {
  EXPECT_THAT(run({"-verbose"}).errors, HasSubstr("cowl: loaded: "));
  EXPECT_EQ(run({}).errors, "");
}

TEST_F(OutcomeRun, ALibraryThatIsNoComponentSaysAtWhichStep) {
  const struct {
    const char* library;
    const char* text;
  } rows[] = {
      {"fw_noentry", "points has no entry point"},
      {"fw_version99", "points has version 99 of its entry point, not 100"},
      {"fw_nullcomponent", "gave no component (status 1)"},
  };
  for (const auto& row : rows) {
    const tests::ProductCopy product;
    product.replaceLibrary("points", row.library);
    const ChildResult loud = product.run("cowl", {"-input", "in.xyz"}, folder_.path());
    const size_t first = loud.errors.find(row.text);
    EXPECT_NE(first, std::string::npos) << loud.errors;
    EXPECT_EQ(loud.errors.find(row.text, first + 1), std::string::npos) << "said once";
    product.changeDescription("", "\nregistry COMPONENT/points/OpenFailsSilently 1\n");
    EXPECT_EQ(plainLines(product.run("cowl", {"-input", "in.xyz"}, folder_.path()).errors),
              "There is nothing to open the file in.xyz with\n")
        << row.library;
  }
}

}  // namespace
