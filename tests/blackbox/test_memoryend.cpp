// Processes that run out of memory: what they leave and how they end.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kMessage =
    "While running this function, you have run out of memory.\n"
    "The application will close. After restarting, please read\n"
    "the online help about \"Memory Optimization\".\n";

constexpr bool isWindows = fs::path::preferred_separator == '\\';

// As the process gave it, and as the parent on this system sees it.
int64_t statusOf(int32_t status) {
  return isWindows ? static_cast<int64_t>(static_cast<uint32_t>(status)) : status & 0xFF;
}

// The text with each number, and the blanks ahead of it, as "#".
std::string withoutNumbers(const std::string& text) {
  std::string shape;
  for (size_t i = 0; i < text.size();) {
    const size_t word = std::min(text.find_first_not_of(' ', i), text.size());
    const size_t behind = std::min(text.find_first_not_of("0123456789", word), text.size());
    if (behind > word) {
      shape += '#';
      i = behind;
    } else {
      shape += text[i++];
    }
  }
  return shape;
}

// "system free:" and all behind it, with any figures, with and without a manager.
bool areFigures(const std::string& text) {
  const std::string system = "system free:#k\nsystem total:#k\nswap free:#k\nswap total:#k\n\n";
  const std::string manager =
      "oromm core now:#k\noromm core limit:#k\noromm swap now:#k\noromm swap limit:#k\n\n";
  const std::string shape = withoutNumbers(text);
  return shape == system + manager || shape == system + "oromm not available\n\n";
}

// The whole of a record that tells a size.
bool isRecordOfASize(const std::string& text) {
  const size_t figures = text.find("system free:");
  return figures != text.npos && areFigures(text.substr(figures)) &&
         withoutNumbers(text.substr(0, figures)) == "attempted:#b\n\n";
}

// What the process said on standard error, without what a sanitizer says of a refused request.
std::string saidBy(const tests::ChildResult& result) {
  std::istringstream lines(tests::plainLines(result.errors));
  std::string said;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("WARNING: AddressSanitizer failed to allocate") == line.npos) said += line + '\n';
  }
  return said;
}

class MemoryEnd : public testing::Test {
 protected:
  tests::ChildResult run(
      const std::string& program, std::vector<std::string> arguments,
      std::vector<std::pair<std::string, std::optional<std::string>>> environment = {}) {
    const tests::ChildResult result =
        tests::runChild({tests::testLibsDir() / tests::programFileName(program), arguments,
                         std::move(environment), folder_.path()});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    return result;
  }
  std::string record() {
    return fs::exists(folder_.file("memory.log")) ? tests::plainLines(folder_.read("memory.log"))
                                                  : "<absent>";
  }

  tests::TempFolder folder_;
};

TEST_F(MemoryEnd, LeavesARecordAMessageAndItsStatus) {
  const auto result = run("memorychild", {"exhaust"});
  EXPECT_EQ(result.exitCode, statusOf(-1));
  EXPECT_EQ(saidBy(result), kMessage);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(record().rfind("attempted:        18446744071562067968b\n\n", 0), 0u) << record();
  EXPECT_TRUE(isRecordOfASize(record())) << record();
}

TEST_F(MemoryEnd, OperatorNewEndsInTheSameWay) {
  const auto result = run("memorychild", {"exhaust-new"});
  EXPECT_EQ(result.exitCode, statusOf(-1));
  EXPECT_EQ(saidBy(result), kMessage);
  EXPECT_TRUE(areFigures(record())) << record() << "how much it wanted is not known";
}

TEST_F(MemoryEnd, ExhaustionWhileTheProcessEndsIsOnTheSpot) {
  const auto result = run("memorychild", {"exit"});
  EXPECT_EQ(result.exitCode, statusOf(-1));
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(saidBy(result), std::string(kMessage) + kMessage);
}

TEST_F(MemoryEnd, RecordThatCannotBeWrittenIsNoFailure) {
  fs::create_directory(folder_.file("memory.log"));
  const auto result = run("memorychild", {"exhaust"});
  EXPECT_EQ(result.exitCode, statusOf(-1));
  EXPECT_EQ(saidBy(result), kMessage);
}

TEST_F(MemoryEnd, BreakFlagIsOffForZeroAlone) {
  const auto flag = [&](std::optional<std::string> value) {
    return run("memorychild", {"flags"}, {{"ORO_BREAK_ENABLED", value}, {"ORO_SPIN_COUNT", {}}})
        .output.substr(0, 1);
  };
  EXPECT_EQ(flag({}), "1");
  EXPECT_EQ(flag("0"), "0");
  for (const char* value : {"00", "1", "no", " 0", "0 "}) EXPECT_EQ(flag(value), "1") << value;
}

TEST_F(MemoryEnd, SpinCountIsReadAsANumber) {
  const auto count = [&](std::optional<std::string> value) {
    const auto result = run("memorychild", {"flags"}, {{"ORO_SPIN_COUNT", value}});
    return std::stoi(result.output.substr(2));
  };
  EXPECT_EQ(count({}), -1);
  EXPECT_EQ(count("4000"), 4000);
  EXPECT_EQ(count("-7"), -7);
  EXPECT_EQ(count("many"), 0);
}

TEST_F(MemoryEnd, FileOfTheBlocksGoesWithTheProcessHoweverThatEnds) {
  for (const char* end : {"return", "exit", "abort", "now"}) {
    const auto result = run("memorychild", {folder_.path().string(), end});
    EXPECT_EQ(result.output.substr(0, 14), "4915200 bytes,") << end;
    EXPECT_EQ(result.exitCode == 7, std::string(end) != "abort");
    EXPECT_TRUE(fs::is_empty(folder_.path())) << end;
  }
}

// --- Each request of a whole run refused in turn

class RefusedRun : public MemoryEnd {
 protected:
  static void SetUpTestSuite() {
    product_ = new tests::TempFolder;
    fs::copy(tests::stageDir(), product_->path(), fs::copy_options::recursive);
    const fs::path name = tests::programFileName("memoryrun");
    fs::copy_file(tests::testLibsDir() / name, product_->file(name));
  }
  static void TearDownTestSuite() { delete product_; }

  // One run in an empty folder with these requests refused; the count of all requests.
  int64_t runRefusing(int64_t first, int64_t last) {
    for (const auto& entry : fs::directory_iterator(folder_.path())) fs::remove_all(entry.path());
    folder_.write("in.xyz", kPoints);
    folder_.write("heap", std::to_string(first) + " " + std::to_string(last));
    const fs::path program = product_->file(tests::programFileName("memoryrun"));
    const std::string home = folder_.path().string();
    result_ = tests::runChild({program,
                               {"-input", "in.xyz", "-output", "out.xyz", "-logfile", "stdout"},
                               {{"HOME", home}, {"XDG_CONFIG_HOME", home}},
                               folder_.path()});
    EXPECT_TRUE(result_.started);
    EXPECT_FALSE(result_.timedOut);
    return fs::exists(folder_.file("requests")) ? std::stoll(folder_.read("requests")) : -1;
  }
  bool endedNormally() {
    return result_.exitCode == 1 && result_.errors.empty() &&
           tests::plainLines(result_.output) == records_ && fs::exists(folder_.file("out.xyz")) &&
           folder_.read("out.xyz") == kPoints && record() == "<absent>";
  }
  // With the record and the message, which a full heap may keep from being made.
  bool endedByExhaustion(bool isFull) {
    if (result_.exitCode != statusOf(-1)) return false;
    const bool isTold = tests::plainLines(result_.errors) == kMessage;
    const bool isSilent = isFull && result_.errors.empty();
    const bool isRecorded = isRecordOfASize(record());
    return (isTold && isRecorded) || isSilent;
  }

  // Each request where starting a program is cheap, else some.
  static int64_t stride(int64_t all) {
    return COWL_EACH_REQUEST ? 1 : std::max<int64_t>(all / 25, 1);
  }

  static constexpr const char* kPoints =
      "637177.98 849393.95 411.19 84 102 93\n637177.30 849396.95 411.25 82 98 90\n";
  static inline tests::TempFolder* product_ = nullptr;
  tests::ChildResult result_;
  std::string records_;
};

TEST_F(RefusedRun, EndsNormallyOrAsExhaustionDoes) {
  const int64_t all = runRefusing(0, 0);
  records_ = tests::plainLines(result_.output);
  ASSERT_GT(all, 50);
  ASSERT_TRUE(endedNormally()) << result_.errors;
  int64_t ended = 0;
  for (int64_t n = 1; n <= all; n += stride(all)) {
    runRefusing(n, n);
    const bool isNormal = endedNormally();
    ended += !isNormal;
    EXPECT_TRUE(isNormal || endedByExhaustion(false))
        << "request " << n << " of " << all << ": " << result_.exitCode << "\n"
        << result_.errors << record();
  }
  EXPECT_GT(ended, 0);
}

TEST_F(RefusedRun, EndsAlsoWhenTheHeapStaysFull) {
  const int64_t all = runRefusing(0, 0);
  for (int64_t n = 1; n <= all; n += 8 * stride(all)) {
    runRefusing(n, INT64_MAX);
    EXPECT_TRUE(endedByExhaustion(true))
        << "from request " << n << " of " << all << ": " << result_.exitCode << "\n"
        << result_.errors << record();
  }
}

}  // namespace
