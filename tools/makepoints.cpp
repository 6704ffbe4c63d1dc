// makepoints COUNT FILE: writes a text point file of that many made-up coloured points.

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>

#include "tools/samplepoints.h"

namespace {

constexpr uint64_t kMostPoints = 1'000'000'000;
constexpr size_t kFlushBytes = 1 << 20;

bool parseCount(const char* text, uint64_t& count) {
  const char* end = text + std::strlen(text);
  auto [stop, error] = std::from_chars(text, end, count);
  return error == std::errc() && stop == end && count <= kMostPoints;
}

bool writePoints(std::FILE* file, uint64_t count) {
  std::string text;
  for (uint64_t index = 0; index < count; ++index) {
    samplepoints::appendLine(text, index);
    if (text.size() < kFlushBytes && index + 1 < count) continue;
    if (std::fwrite(text.data(), 1, text.size(), file) != text.size()) return false;
    text.clear();
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  uint64_t count = 0;
  if (argc != 3 || !parseCount(argv[1], count)) {
    std::fprintf(stderr, "usage: makepoints COUNT FILE   (COUNT: 0 to %llu)\n",
                 static_cast<unsigned long long>(kMostPoints));
    return 2;
  }
  std::FILE* file = std::fopen(argv[2], "wb");
  if (!file) {
    std::fprintf(stderr, "makepoints: cannot open %s\n", argv[2]);
    return 1;
  }
  bool written = writePoints(file, count);
  if (std::fclose(file) != 0 || !written) {
    std::fprintf(stderr, "makepoints: cannot write %s\n", argv[2]);
    return 1;
  }
  return 0;
}
