#pragma once

// The executable in a folder of its own, under any name and without a single component library.

#include <filesystem>
#include <string>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"

namespace tests {

class BareProgram {
 public:
  explicit BareProgram(const std::string& name = "cowl");

  const std::filesystem::path& folder() const { return folder_.path(); }
  const std::filesystem::path& program() const { return program_; }

  /// Runs it in its folder.
  ChildResult run(std::vector<std::string> arguments,
                  std::vector<std::pair<std::string, std::optional<std::string>>> environment = {});

  /// A file beside it as text with line feeds; "<absent>" where there is none.
  std::string file(const std::string& name) const;

 private:
  TempFolder folder_;
  std::filesystem::path program_;
};

}  // namespace tests
