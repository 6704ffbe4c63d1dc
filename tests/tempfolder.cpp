#include "tests/tempfolder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace tests {

TempFolder::TempFolder() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("cowl-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TempFolder::write(const std::filesystem::path& name,
                                        std::string_view bytes) const {
  std::filesystem::path file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw std::runtime_error("cannot write " + file.string());
  return file;
}

std::string TempFolder::read(const std::filesystem::path& name) const {
  std::ifstream in(path_ / name, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + (path_ / name).string());
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace tests
