#include "platform/filestream.h"

namespace platform {

std::size_t writeBlock(std::FILE* stream, const void* bytes, std::size_t count) {
  const std::size_t taken = diskRoomHook != nullptr ? diskRoomHook(count) : count;
  return std::fwrite(bytes, 1, taken, stream);
}

}  // namespace platform
