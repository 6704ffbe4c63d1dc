// The executable under a limit of the system's own: 256 MiB of address space, and a point file of
// four times that size.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kLimitKilobytes = "262144";
constexpr size_t kFileBytes = size_t{1} << 30;

class MemoryLimit : public testing::Test {
 protected:
  // Copies of one line, which is padded to so many bytes; whole lines, at least the size of the
  // file.
  size_t writePoints(const std::string& numbers, size_t lineBytes) {
    std::string line = numbers;
    line.append(lineBytes - 1 - line.size(), ' ');
    line += '\n';
    std::string many;
    while (many.size() < (size_t{1} << 20)) many += line;
    std::ofstream file(folder_.file("in.xyz"), std::ios::binary);
    size_t written = 0;
    for (; written < kFileBytes; written += many.size()) file << many;
    return written / lineBytes;
  }
  tests::ChildResult runLimited() {
    const std::string script =
        "ulimit -v " + std::string(kLimitKilobytes) + " && exec \"$0\" \"$@\"";
    return tests::runChild({.program = "/bin/sh",
                            .arguments = {"-c", script, tests::cowlProgram().string(), "-input",
                                          "in.xyz", "-output", "out.xyz", "-logfile", "records"},
                            .directory = folder_.path(),
                            .seconds = 300});
  }
  std::string text(const char* name) {
    return fs::exists(folder_.file(name)) ? folder_.read(name) : "";
  }

  tests::TempFolder folder_;
};

TEST_F(MemoryLimit, FileWhosePointsFitIsSavedAsWithoutALimit) {
  const std::string numbers = "637177.98 849393.95 411.19 84 102 93";
  const size_t points = writePoints(numbers, 1 << 10);
  const auto result = runLimited();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  EXPECT_FALSE(fs::exists(folder_.file("memory.log")));
  ASSERT_EQ(fs::file_size(folder_.file("out.xyz")), points * (numbers.size() + 1));
  std::ifstream out(folder_.file("out.xyz"));
  size_t lines = 0;
  for (std::string line; std::getline(out, line); ++lines) ASSERT_EQ(line, numbers) << lines;
  EXPECT_EQ(lines, points);
}

TEST_F(MemoryLimit, FileWhosePointsDoNotFitEndsAsExhaustionDoes) {
  writePoints("1.5 2.5 3.5", 16);
  const auto result = runLimited();
  EXPECT_EQ(result.exitCode, 255);
  EXPECT_EQ(result.errors.rfind("While running this function, you have run out of memory.\n", 0),
            0u)
      << result.errors;
  EXPECT_TRUE(std::regex_match(
      text("memory.log"),
      std::regex(
          "(attempted: +[0-9]+b\n\n)?system free: +[0-9]+k\nsystem total: +[0-9]+k\nswap "
          "free: +[0-9]+k\nswap total: +[0-9]+k\n\noromm core now: +[0-9]+k\noromm core limit: "
          "+[0-9]+k\noromm swap now: +[0-9]+k\noromm swap limit: +[0-9]+k\n\n")))
      << text("memory.log");
  EXPECT_FALSE(fs::exists(folder_.file("out.xyz")));
}

}  // namespace
