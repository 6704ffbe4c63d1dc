#include "platform/directory.h"

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

EntryKind kindOf(const WIN32_FIND_DATAW& entry) {
  const bool leadsElsewhere = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                              (entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                               entry.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
  if (leadsElsewhere) return EntryKind::link;
  const bool isDirectory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return isDirectory ? EntryKind::directory : EntryKind::file;
}

bool isDots(const wchar_t* name) {
  return std::wstring_view(name) == L"." || std::wstring_view(name) == L"..";
}

}  // namespace

DirectoryIterator::DirectoryIterator(std::u16string_view path) {
  std::wstring pattern = toWidePath(path);
  if (!pattern.empty() && pattern.back() != L'\\' && pattern.back() != L'/') pattern += L'\\';
  WIN32_FIND_DATAW entry = {};
  const HANDLE search =
      pattern.empty() ? INVALID_HANDLE_VALUE : FindFirstFileW((pattern + L'*').c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    // The root of a drive may hold nothing at all, not even itself.
    failed_ = pattern.empty() || GetLastError() != ERROR_FILE_NOT_FOUND;
    return;
  }
  handle_ = search;
  present_ = true;
  name_ = fromWide(entry.cFileName);
  kind_ = kindOf(entry);
  if (isDots(entry.cFileName)) next();
}

DirectoryIterator::~DirectoryIterator() {
  if (handle_ != nullptr) FindClose(handle_);
}

void DirectoryIterator::next() {
  WIN32_FIND_DATAW entry = {};
  do {
    present_ = FindNextFileW(handle_, &entry) != 0;
  } while (present_ && isDots(entry.cFileName));
  if (!present_) {
    failed_ = GetLastError() != ERROR_NO_MORE_FILES;
    return;
  }
  name_ = fromWide(entry.cFileName);
  kind_ = kindOf(entry);
}

}  // namespace platform
