#pragma once

// Starts a program and waits for its end. For tests only.

#include <filesystem>
#include <string>
#include <vector>

namespace tests {

struct EchoResult {
  int exitCode;        ///< -1 if the program could not be started
  std::string output;  ///< what it wrote to its standard output
};

EchoResult runChild(const std::filesystem::path& program,
                    const std::vector<std::u16string>& arguments);

}  // namespace tests
