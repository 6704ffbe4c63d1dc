#include "platform/filestream.h"

#include <cerrno>

#include "platform/posix/posixgate.h"

namespace platform {

bool seekStream(std::FILE* stream, std::int64_t offset, SeekFrom from) {
  constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  return fseeko(stream, offset, origins[static_cast<int>(from)]) == 0;
}

std::int64_t tellStream(std::FILE* stream) { return ftello(stream); }

// What cannot be synchronised (a pipe, a terminal) has no disk to wait for.
bool flushCommitting(std::FILE* stream) {
  if (std::fflush(stream) != 0) return false;
  return fdatasync(fileno(stream)) == 0 || errno == EINVAL || errno == EROFS;
}

}  // namespace platform
