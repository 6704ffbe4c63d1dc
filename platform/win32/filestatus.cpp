#include "platform/filestatus.h"

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

// The system counts tenths of microseconds from the year 1601.
std::int64_t secondsOf(const FILETIME& time) {
  constexpr std::int64_t ticksPerSecond = 10000000;
  constexpr std::int64_t secondsTo1970 = 11644473600;
  const std::int64_t ticks = static_cast<std::int64_t>(time.dwHighDateTime) << 32 |
                             static_cast<std::int64_t>(time.dwLowDateTime);
  return ticks / ticksPerSecond - secondsTo1970;
}

// What the volume knows the file by.
bool identityOf(std::u16string_view path, BY_HANDLE_FILE_INFORMATION& identity) {
  constexpr DWORD anyUse = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  // Without the last flag a directory does not open.
  const HANDLE file = CreateFileW(toWidePath(path).c_str(), 0, anyUse, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool known = GetFileInformationByHandle(file, &identity) != 0;
  CloseHandle(file);
  return known;
}

}  // namespace

bool pathAllows(std::u16string_view path, int access) {
  return _waccess(toWidePath(path).c_str(), access & (accessWrite | accessRead)) == 0;
}

bool fileStatus(std::u16string_view path, FileStatus& status) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (!GetFileAttributesExW(toWidePath(path).c_str(), GetFileExInfoStandard, &data)) return false;
  status.size = static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
  status.modified = secondsOf(data.ftLastWriteTime);
  status.isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return true;
}

bool isSameFile(std::u16string_view one, std::u16string_view other) {
  BY_HANDLE_FILE_INFORMATION first = {};
  BY_HANDLE_FILE_INFORMATION second = {};
  return identityOf(one, first) && identityOf(other, second) &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
         first.nFileIndexHigh == second.nFileIndexHigh &&
         first.nFileIndexLow == second.nFileIndexLow;
}

}  // namespace platform
