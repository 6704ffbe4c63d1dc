#pragma once

// Runs a program, kills it in the midst of its work, and gathers what it had written by then.
//
//   const std::string said = tests::runAndKill(program, {"folder", "1"}, 2000);
//
// The time counts from the first byte on its standard output.

#include <filesystem>
#include <string>
#include <vector>

namespace tests {

/// What the program wrote to its standard output. Empty when it did not start or ended before it
/// said anything.
std::string runAndKill(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, int microseconds);

}  // namespace tests
