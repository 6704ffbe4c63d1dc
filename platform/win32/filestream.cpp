#include "platform/filestream.h"

namespace platform {

bool seekStream(std::FILE* stream, std::int64_t offset, SeekFrom from) {
  constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  return _fseeki64(stream, offset, origins[static_cast<int>(from)]) == 0;
}

std::int64_t tellStream(std::FILE* stream) { return _ftelli64(stream); }

bool flushCommitting(std::FILE* stream) { return std::fflush(stream) == 0; }

}  // namespace platform
