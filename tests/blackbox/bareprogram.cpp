#include "tests/blackbox/bareprogram.h"

namespace tests {

BareProgram::BareProgram(const std::string& name) : program_(folder_.file(programFileName(name))) {
  std::filesystem::copy_file(cowlProgram(), program_);
}

ChildResult BareProgram::run(
    std::vector<std::string> arguments,
    std::vector<std::pair<std::string, std::optional<std::string>>> environment) {
  return runChild({program_, std::move(arguments), std::move(environment), folder()});
}

std::string BareProgram::file(const std::string& name) const {
  if (!std::filesystem::exists(folder() / name)) return "<absent>";
  return plainLines(folder_.read(name));
}

}  // namespace tests
