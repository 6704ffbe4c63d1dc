#include "tests/blackbox/win32/screenshot.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <thread>

namespace tests {
namespace {

namespace fs = std::filesystem;

fs::path folder() {
  const char* const named = std::getenv("COWL_SCREENSHOTS");
  return named != nullptr ? named : ".";
}

// Asks and waits; false if nobody answers.
bool isTaken(const fs::path& want, const fs::path& picture) {
  fs::remove(picture);
  std::ofstream{want};
  for (int i = 0; i < 600 && (!fs::exists(picture) || fs::exists(want)); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return fs::exists(picture);
}

}  // namespace

Screenshot::Screenshot(const std::string& name) {
  const fs::path picture = folder() / (name + ".ppm");
  if (!isTaken(folder() / (name + ".want"), picture)) return;
  std::ifstream file(picture, std::ios::binary);
  std::string form;
  int brightest = 0;
  file >> form >> width_ >> height_ >> brightest;
  file.get();  // the one blank behind the head
  pixels_.assign(std::istreambuf_iterator<char>(file), {});
  const auto expected = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 3;
  if (form != "P6" || brightest != 255 || pixels_.size() != expected) width_ = height_ = 0;
}

std::uint32_t Screenshot::colourAt(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
  const auto at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(x)) *
                  3;
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(pixels_[at + i]); };
  return static_cast<std::uint32_t>(byte(0) << 16 | byte(1) << 8 | byte(2));
}

int Screenshot::countColours(const Area& area) const {
  std::set<std::uint32_t> colours;
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) colours.insert(colourAt(x, y));
  }
  return static_cast<int>(colours.size());
}

}  // namespace tests
