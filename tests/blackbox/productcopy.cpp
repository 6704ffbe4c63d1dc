#include "tests/blackbox/productcopy.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/testpaths.h"

namespace tests {

namespace fs = std::filesystem;

namespace {

constexpr const char* kSuffixes[] = {".so", ".dll"};

}  // namespace

ProductCopy::ProductCopy() { fs::copy(stageDir(), folder(), fs::copy_options::recursive); }

void ProductCopy::removeLibrary(const std::string& stem) const {
  for (const char* suffix : kSuffixes) fs::remove(file(stem + suffix));
}

void ProductCopy::cutLibrary(const std::string& stem, std::uintmax_t size) const {
  for (const char* suffix : kSuffixes) {
    if (fs::exists(file(stem + suffix))) fs::resize_file(file(stem + suffix), size);
  }
}

void ProductCopy::replaceLibrary(const std::string& stem, const std::string& testLibrary) const {
  removeLibrary(stem);
  for (const char* suffix : kSuffixes) {
    const fs::path library = testLibsDir() / (testLibrary + suffix);
    if (fs::exists(library)) fs::copy_file(library, file(stem + suffix));
  }
}

void ProductCopy::changeDescription(const std::string& from, const std::string& to) const {
  std::string text = folder_.read("cowl.description");
  const size_t place = from.empty() ? text.size() : text.find(from);
  if (place == text.npos) throw std::runtime_error("the description has no " + from);
  folder_.write("cowl.description", text.replace(place, from.size(), to));
}

ChildResult ProductCopy::run(const std::string& program, std::vector<std::string> arguments,
                             const fs::path& directory) const {
  return runChild({file(programFileName(program).string()), std::move(arguments), {}, directory});
}

}  // namespace tests
