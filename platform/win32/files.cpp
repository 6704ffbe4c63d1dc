#include "platform/files.h"

#include "platform/text.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

DWORD attributesOf(std::u16string_view path) {
  return GetFileAttributesW(toWidePath(path).c_str());
}

// Wine tells no kind of a link, and removes what it leads to in its place.
bool isLinkOfUnknownKind(std::u16string_view path) {
  const DWORD attributes = attributesOf(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    return false;
  }
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW(toWidePath(path).c_str(), &found);
  if (search != INVALID_HANDLE_VALUE) FindClose(search);
  return found.dwReserved0 == 0;
}

struct OpenHandle {
  HANDLE handle;
  explicit OpenHandle(HANDLE opened) : handle(opened) {}
  ~OpenHandle() {
    if (isOpen()) CloseHandle(handle);
  }
  OpenHandle(const OpenHandle&) = delete;
  OpenHandle& operator=(const OpenHandle&) = delete;
  bool isOpen() const { return handle != nullptr && handle != INVALID_HANDLE_VALUE; }
};

}  // namespace

MakeDirectory makeDirectory(std::u16string_view path) {
  if (_wmkdir(toWidePath(path).c_str()) == 0) return MakeDirectory::created;
  return errno == EEXIST ? MakeDirectory::exists : MakeDirectory::failed;
}

std::u16string currentDirectory(int maxUnits) {
  if (maxUnits <= 0) return {};
  std::wstring path(static_cast<std::size_t>(maxUnits), L'\0');
  const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(maxUnits), path.data());
  if (length >= path.size()) return {};
  path.resize(length);
  return fromWide(path);
}

bool setCurrentDirectory(std::u16string_view path) {
  return SetCurrentDirectoryW(toWidePath(path).c_str()) != 0;
}

bool pathExists(std::u16string_view path) { return attributesOf(path) != INVALID_FILE_ATTRIBUTES; }

bool isDirectory(std::u16string_view path) {
  const DWORD attributes = attributesOf(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isFile(std::u16string_view path) { return pathExists(path) && !isDirectory(path); }

std::FILE* openFile(std::u16string_view path, const char* mode) {
  const std::wstring wideMode = toWide(fromSystem(mode));
  return _wfopen(toWidePath(path).c_str(), wideMode.c_str());
}

bool removeFile(std::u16string_view path) { return DeleteFileW(toWidePath(path).c_str()) != 0; }

bool removeDirectory(std::u16string_view path) {
  return !isLinkOfUnknownKind(path) && RemoveDirectoryW(toWidePath(path).c_str()) != 0;
}

bool renameFile(std::u16string_view from, std::u16string_view to) {
  return MoveFileExW(toWidePath(from).c_str(), toWidePath(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool renameToFreeName(std::u16string_view from, std::u16string_view to) {
  return MoveFileExW(toWidePath(from).c_str(), toWidePath(to).c_str(), MOVEFILE_COPY_ALLOWED) != 0;
}

std::u16string followLinks(std::u16string_view path) { return std::u16string(path); }

// Not every system refuses the renaming.
bool prepareSuccessor(std::FILE*, std::u16string_view older) {
  const DWORD attributes = attributesOf(older);
  const bool isReadOnly =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (isReadOnly) SetLastError(ERROR_ACCESS_DENIED);
  return !isReadOnly;
}

std::int64_t fileSize(std::u16string_view path) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (!GetFileAttributesExW(toWidePath(path).c_str(), GetFileExInfoStandard, &data)) return -1;
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return -1;
  return static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

bool flushToDisk(std::FILE* stream) {
  if (std::fflush(stream) != 0) return false;
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  return FlushFileBuffers(handle) != 0;
}

bool MappedFile::open(std::u16string_view path) {
  close();
  const OpenHandle file(CreateFileW(toWidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size = {};
  if (!file.isOpen() || GetFileType(file.handle) != FILE_TYPE_DISK ||
      !GetFileSizeEx(file.handle, &size)) {
    return false;
  }
  if (size.QuadPart > 0) {  // an empty file cannot be mapped
    const OpenHandle mapping(
        CreateFileMappingW(file.handle, nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (!mapping.isOpen()) return false;
    const void* view = MapViewOfFile(mapping.handle, FILE_MAP_READ, 0, 0, 0);
    if (view == nullptr) return false;
    data_ = static_cast<const char*>(view);
    size_ = static_cast<std::size_t>(size.QuadPart);
  }
  open_ = true;
  return true;
}

void MappedFile::close() {
  if (size_ > 0) UnmapViewOfFile(data_);
  data_ = "";
  size_ = 0;
  open_ = false;
}

}  // namespace platform
