#include "platform/directory.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {
namespace {

EntryKind kindOfMode(mode_t mode) {
  if (S_ISREG(mode)) return EntryKind::file;
  if (S_ISDIR(mode)) return EntryKind::directory;
  return S_ISLNK(mode) ? EntryKind::link : EntryKind::other;
}

// Some file systems do not tell the kind with the name.
EntryKind kindOf(DIR* directory, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return kindOfMode(DTTOIF(entry.d_type));
  struct stat what = {};
  if (fstatat(dirfd(directory), entry.d_name, &what, AT_SYMLINK_NOFOLLOW) != 0) {
    return EntryKind::other;
  }
  return kindOfMode(what.st_mode);
}

bool isDots(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// No path in the "\" form leads to such an entry; it would lead to another one.
bool isOutOfReach(const char* name) { return std::strchr(name, '\\') != nullptr; }

constexpr int kDeepest = 1000;

bool removeEntry(int folder, const char* name, int depth);

// The names are gathered before the first is removed: a directory that changes may be read twice
// or in part. Takes the descriptor.
void removeEntries(int descriptor, int depth) {
  DIR* const directory = fdopendir(descriptor);
  if (directory == nullptr) {
    close(descriptor);
    return;
  }
  std::vector<std::string> names;
  while (const dirent* const entry = readdir(directory)) {
    if (!isDots(entry->d_name)) names.emplace_back(entry->d_name);
  }
  for (const std::string& name : names) removeEntry(descriptor, name.c_str(), depth);
  closedir(directory);
}

// Goes down by descriptors, so that nobody can put a link in the way.
bool removeEntry(int folder, const char* name, int depth) {
  if (unlinkat(folder, name, 0) == 0) return true;
  constexpr int noLink = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  const int below = depth < kDeepest ? openat(folder, name, noLink) : -1;
  if (below >= 0) removeEntries(below, depth + 1);
  return unlinkat(folder, name, AT_REMOVEDIR) == 0;
}

}  // namespace

DirectoryIterator::DirectoryIterator(std::u16string_view path)
    : handle_(opendir(toSystemPath(path).c_str())), failed_(handle_ == nullptr) {
  if (handle_ != nullptr) next();
}

DirectoryIterator::~DirectoryIterator() {
  if (handle_ != nullptr) closedir(static_cast<DIR*>(handle_));
}

void DirectoryIterator::next() {
  auto* const directory = static_cast<DIR*>(handle_);
  const dirent* entry = nullptr;
  do {
    errno = 0;
    entry = readdir(directory);
  } while (entry != nullptr && (isDots(entry->d_name) || isOutOfReach(entry->d_name)));
  present_ = entry != nullptr;
  if (!present_) {
    failed_ = errno != 0;
    return;
  }
  name_ = fromSystem(entry->d_name);
  kind_ = kindOf(directory, *entry);
}

bool removeTree(std::u16string_view path) {
  std::string name = toSystemPath(path);
  while (name.size() > 1 && name.back() == '/') name.pop_back();  // it would follow a link
  struct stat what = {};
  return stat(name.c_str(), &what) == 0 && S_ISDIR(what.st_mode) &&
         removeEntry(AT_FDCWD, name.c_str(), 0);
}

}  // namespace platform
