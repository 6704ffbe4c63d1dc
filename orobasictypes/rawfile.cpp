#include "orobasictypes/rawfile.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int64_t exchangedBlock = 1024;

void reverseEach(char* bytes, int64_t count, int size) {
  for (int64_t i = 0; i < count; ++i) std::reverse(bytes + i * size, bytes + (i + 1) * size);
}

}  // namespace

// By way of a block, so that a value of which only a part came is left alone.
bool rawfile::readElements(std::FILE* stream, void* to, int64_t count, int size, bool swapped) {
  char block[exchangedBlock];
  auto* out = static_cast<char*>(to);
  while (count > 0) {
    const int64_t asked = std::min(count, exchangedBlock / size);
    const size_t bytes = static_cast<size_t>(asked * size);
    const size_t got = stream != nullptr ? std::fread(block, 1, bytes, stream) : 0;
    const int64_t whole = static_cast<int64_t>(got) / size;
    if (swapped) reverseEach(block, whole, size);
    std::memcpy(out, block, static_cast<size_t>(whole * size));
    if (whole < asked) return false;
    out += bytes;
    count -= asked;
  }
  return true;
}

bool rawfile::writeElements(std::FILE* stream, const void* from, int64_t count, int size,
                            bool swapped) {
  char block[exchangedBlock];
  const auto* in = static_cast<const char*>(from);
  while (count > 0) {
    const int64_t asked = std::min(count, exchangedBlock / size);
    const size_t bytes = static_cast<size_t>(asked * size);
    std::memcpy(block, in, bytes);
    if (swapped) reverseEach(block, asked, size);
    if (stream == nullptr || std::fwrite(block, 1, bytes, stream) != bytes) return false;
    in += bytes;
    count -= asked;
  }
  return true;
}

bool rawfile::writeLow(std::FILE* stream, uint64_t value, int width, bool swapped) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  if (swapped) std::reverse(bytes, bytes + width);
  const auto size = static_cast<size_t>(width);
  return stream != nullptr && std::fwrite(bytes, 1, size, stream) == size;
}
