#include "platform/directory.h"

#include <string>
#include <vector>

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

bool isReparsePoint(const WIN32_FIND_DATAW& entry) {
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// Links and junctions have a tag that stands for another name; files that a service fetches when
// they are read have other ones. Wine tells no tag, and has no other reparse points than links.
EntryKind kindOf(const WIN32_FIND_DATAW& entry) {
  if (isReparsePoint(entry) &&
      (entry.dwReserved0 == 0 || IsReparseTagNameSurrogate(entry.dwReserved0))) {
    return EntryKind::link;
  }
  const bool isDirectory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return isDirectory ? EntryKind::directory : EntryKind::file;
}

bool isDots(const wchar_t* name) {
  return std::wstring_view(name) == L"." || std::wstring_view(name) == L"..";
}

bool endsInSeparator(const std::wstring& path) {
  return !path.empty() && (path.back() == L'\\' || path.back() == L'/');
}

std::wstring withSeparator(std::wstring path) {
  if (!path.empty() && !endsInSeparator(path)) path += L'\\';
  return path;
}

constexpr int kDeepest = 1000;

struct Entry {
  std::wstring path;
  EntryKind kind;
  bool isDirectory;     // of a link: what it leads to
  bool hasUnknownLink;  // the system does not tell what kind of link it is
};

Entry entryOf(std::wstring path, const WIN32_FIND_DATAW& found) {
  return {std::move(path), kindOf(found), (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
          isReparsePoint(found) && found.dwReserved0 == 0};
}

// Gathered before the first is removed: a directory that changes may be read in part.
std::vector<Entry> entriesOf(const std::wstring& path) {
  std::vector<Entry> entries;
  const std::wstring folder = withSeparator(path);
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW((folder + L'*').c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    if (!isDots(found.cFileName)) entries.push_back(entryOf(folder + found.cFileName, found));
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return entries;
}

bool removeEntry(const Entry& entry, int depth) {
  // Wine would remove what the link leads to.
  if (entry.hasUnknownLink) return false;
  if (!entry.isDirectory) return DeleteFileW(entry.path.c_str()) != 0;
  if (entry.kind == EntryKind::directory && depth < kDeepest) {
    for (const Entry& below : entriesOf(entry.path)) removeEntry(below, depth + 1);
  }
  return RemoveDirectoryW(entry.path.c_str()) != 0;
}

}  // namespace

DirectoryIterator::DirectoryIterator(std::u16string_view path) {
  const std::wstring folder = withSeparator(toWidePath(path));
  WIN32_FIND_DATAW entry = {};
  const HANDLE search =
      folder.empty() ? INVALID_HANDLE_VALUE : FindFirstFileW((folder + L'*').c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    // The root of a drive may hold nothing at all, not even itself.
    failed_ = folder.empty() || GetLastError() != ERROR_FILE_NOT_FOUND;
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

bool removeTree(std::u16string_view path) {
  std::wstring name = toWidePath(path);
  while (name.size() > 1 && endsInSeparator(name) && name[name.size() - 2] != L':') name.pop_back();
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
    return false;
  }
  WIN32_FIND_DATAW found = {};
  found.dwFileAttributes = attributes;
  if (!endsInSeparator(name)) {  // the root of a drive is not found, and no link
    const HANDLE search = FindFirstFileW(name.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
  }
  return removeEntry(entryOf(name, found), 0);
}

}  // namespace platform
