#pragma once

// Runs a program to its end and gathers what it wrote, on both systems.
//
//   tests::Child child{tests::cowlProgram(), {"-help"}};
//   const tests::ChildResult result = tests::runChild(child);
//   EXPECT_EQ(result.exitCode, 1);
//
// Its standard input is at its end, it has no display and a home of its own, and it is killed at
// its time limit. Any thread.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

/// Where a child's standard output or standard error leads.
enum class ChildOutput {
  captured,  ///< to ChildResult::output or ChildResult::errors
  unread,    ///< to a pipe whose reader has gone
  none,      ///< the child is started without one
};

struct Child {
  std::filesystem::path program;
  std::vector<std::string> arguments;  ///< UTF-8, without the program's name
  /// Variables to set, or to remove where there is no value, over the environment of the test.
  std::vector<std::pair<std::string, std::optional<std::string>>> environment = {};
  std::filesystem::path directory = {};  ///< current directory; empty: that of the test
  int seconds = 60;                      ///< time limit
  ChildOutput outputTo = ChildOutput::captured;
  ChildOutput errorsTo = ChildOutput::captured;
};

struct ChildResult {
  bool started = false;
  bool timedOut = false;
  std::int64_t exitCode =
      -1;              ///< 0..255 on Linux (128 + signal after a signal), 32 bits on Windows
  std::string output;  ///< of standard output, bytes as written
  std::string errors;  ///< of standard error
};

ChildResult runChild(const Child& child);

/// The text with the line ends of a text file on Windows turned into line feeds.
std::string plainLines(std::string_view text);

/// The staged executable.
std::filesystem::path cowlProgram();
/// A name of a program as the system's files have it: with ".exe" on Windows.
std::filesystem::path programFileName(std::string_view stem);

/// Starts and waits; output and errors go to the two files. For runChild alone.
void runToFiles(const Child& child, const std::filesystem::path& output,
                const std::filesystem::path& errors, ChildResult& result);

}  // namespace tests
