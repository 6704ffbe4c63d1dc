#include "platform/streams.h"

#include <cstddef>

namespace platform {

bool writeStream(std::FILE* stream, std::string_view bytes) {
  if (stream == nullptr) return false;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size();
  return std::fflush(stream) == 0 && written;
}

bool writeStandardOutput(std::string_view bytes) { return writeStream(stdout, bytes); }

bool writeStandardError(std::string_view bytes) { return writeStream(stderr, bytes); }

void setLineBuffered(std::FILE* stream) {
  constexpr std::size_t bufferSize = 64;
  std::setvbuf(stream, nullptr, _IOLBF, bufferSize);
}

}  // namespace platform
