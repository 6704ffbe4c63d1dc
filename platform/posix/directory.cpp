#include "platform/directory.h"

#include <cerrno>
#include <cstring>

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
  } while (entry != nullptr &&
           (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0));
  present_ = entry != nullptr;
  if (!present_) {
    failed_ = errno != 0;
    return;
  }
  name_ = fromSystem(entry->d_name);
  kind_ = kindOf(directory, *entry);
}

}  // namespace platform
