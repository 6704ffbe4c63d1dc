#pragma once

// The staged product in a folder of its own, whose libraries and description may be changed.

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"

namespace tests {

class ProductCopy {
 public:
  ProductCopy();

  const std::filesystem::path& folder() const { return folder_.path(); }
  std::filesystem::path file(const std::string& name) const { return folder_.file(name); }

  /// Puts the library made for tests in the place of one of the product's.
  void replaceLibrary(const std::string& stem, const std::string& testLibrary) const;
  void removeLibrary(const std::string& stem) const;
  /// Leaves the first so many bytes of it.
  void cutLibrary(const std::string& stem, std::uintmax_t size) const;
  /// Replaces the text, which must stand in the description; empty adds it at the end.
  void changeDescription(const std::string& from, const std::string& to) const;

  /// Runs one of its programs in the directory.
  ChildResult run(const std::string& program, std::vector<std::string> arguments,
                  const std::filesystem::path& directory) const;

 private:
  TempFolder folder_;
};

}  // namespace tests
