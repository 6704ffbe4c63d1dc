#include "platform/descriptor.h"

#include <cerrno>

#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {
namespace {

int accessOf(unsigned mode) {
  if ((mode & openWrite) == 0) return O_RDONLY;
  return (mode & openRead) != 0 ? O_RDWR : O_WRONLY;
}

}  // namespace

int openDescriptor(std::u16string_view path, unsigned mode) {
  int flags = accessOf(mode) | O_CLOEXEC;
  if ((mode & openCreate) != 0) flags |= O_CREAT;
  if ((mode & openTruncate) != 0) flags |= O_TRUNC;
  if ((mode & openAppend) != 0) flags |= O_APPEND;
  constexpr mode_t readAndWrite = 0666;  // less what the user's mask takes away
  const int descriptor = open(toSystemPath(path).c_str(), flags, readAndWrite);
  struct stat what = {};
  if (descriptor >= 0 && fstat(descriptor, &what) == 0 && S_ISDIR(what.st_mode)) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

std::int64_t readDescriptor(int descriptor, void* buffer, std::size_t bytes) {
  ssize_t got = 0;
  do {
    got = read(descriptor, buffer, bytes);
  } while (got < 0 && errno == EINTR);
  return got;
}

std::int64_t writeDescriptor(int descriptor, const void* bytes, std::size_t count) {
  const std::size_t taken = diskRoomHook != nullptr ? diskRoomHook(count) : count;
  if (taken == 0 && count > 0) return -1;
  ssize_t written = 0;
  do {
    written = write(descriptor, bytes, taken);
  } while (written < 0 && errno == EINTR);
  return written;
}

std::int64_t seekDescriptor(int descriptor, std::int64_t offset, SeekFrom from) {
  constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  return lseek(descriptor, offset, origins[static_cast<int>(from)]);
}

bool truncateDescriptor(int descriptor, std::int64_t bytes) {
  return ftruncate(descriptor, bytes) == 0;
}

bool closeDescriptor(int descriptor) { return close(descriptor) == 0; }

}  // namespace platform
