#include "platform/descriptor.h"

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

int accessOf(unsigned mode) {
  if ((mode & openWrite) == 0) return _O_RDONLY;
  return (mode & openRead) != 0 ? _O_RDWR : _O_WRONLY;
}

}  // namespace

int openDescriptor(std::u16string_view path, unsigned mode) {
  int flags = accessOf(mode) | _O_NOINHERIT;
  flags |= (mode & openText) != 0 ? _O_TEXT : _O_BINARY;
  if ((mode & openCreate) != 0) flags |= _O_CREAT;
  if ((mode & openTruncate) != 0) flags |= _O_TRUNC;
  if ((mode & openAppend) != 0) flags |= _O_APPEND;
  return _wsopen(toWidePath(path).c_str(), flags, _SH_DENYNO, _S_IREAD | _S_IWRITE);
}

std::int64_t readDescriptor(int descriptor, void* buffer, std::size_t bytes) {
  return _read(descriptor, buffer, static_cast<unsigned>(bytes));
}

std::int64_t writeDescriptor(int descriptor, const void* bytes, std::size_t count) {
  const std::size_t taken = diskRoomHook != nullptr ? diskRoomHook(count) : count;
  if (taken == 0 && count > 0) return -1;
  return _write(descriptor, bytes, static_cast<unsigned>(taken));
}

std::int64_t seekDescriptor(int descriptor, std::int64_t offset, SeekFrom from) {
  constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  return _lseeki64(descriptor, offset, origins[static_cast<int>(from)]);
}

bool truncateDescriptor(int descriptor, std::int64_t bytes) {
  return _chsize_s(descriptor, bytes) == 0;
}

bool closeDescriptor(int descriptor) { return _close(descriptor) == 0; }

}  // namespace platform
