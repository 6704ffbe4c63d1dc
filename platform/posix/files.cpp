#include "platform/files.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {
namespace {

bool statOf(std::u16string_view path, struct stat& what) {
  return stat(toSystemPath(path).c_str(), &what) == 0;
}

bool isOpenDirectory(int descriptor) {
  struct stat what = {};
  return fstat(descriptor, &what) == 0 && S_ISDIR(what.st_mode);
}

// The letter "c" means commit at each flush on Windows, and another thing here; flushCommitting
// of filestream.h stands in for it.
std::string withoutCommit(std::string mode) {
  std::erase(mode, 'c');
  return mode;
}

}  // namespace

MakeDirectory makeDirectory(std::u16string_view path) {
  constexpr mode_t allRights = 0777;  // less what the user's mask takes away
  if (mkdir(toSystemPath(path).c_str(), allRights) == 0) return MakeDirectory::created;
  return errno == EEXIST ? MakeDirectory::exists : MakeDirectory::failed;
}

std::u16string currentDirectory(int maxUnits) {
  const std::unique_ptr<char, void (*)(void*)> path(getcwd(nullptr, 0), std::free);
  if (path == nullptr || maxUnits <= 0) return {};
  std::u16string text = fromSystemPath(path.get());
  return text.size() < static_cast<std::size_t>(maxUnits) ? text : std::u16string();
}

bool setCurrentDirectory(std::u16string_view path) {
  return chdir(toSystemPath(path).c_str()) == 0;
}

bool pathExists(std::u16string_view path) {
  struct stat what = {};
  return statOf(path, what);
}

bool isDirectory(std::u16string_view path) {
  struct stat what = {};
  return statOf(path, what) && S_ISDIR(what.st_mode);
}

bool isFile(std::u16string_view path) {
  struct stat what = {};
  return statOf(path, what) && S_ISREG(what.st_mode);
}

std::FILE* openFile(std::u16string_view path, const char* mode) {
  std::FILE* const stream = std::fopen(toSystemPath(path).c_str(), withoutCommit(mode).c_str());
  if (stream == nullptr || !isOpenDirectory(fileno(stream))) return stream;
  std::fclose(stream);
  return nullptr;
}

bool removeFile(std::u16string_view path) { return unlink(toSystemPath(path).c_str()) == 0; }

bool removeDirectory(std::u16string_view path) { return rmdir(toSystemPath(path).c_str()) == 0; }

bool renameFile(std::u16string_view from, std::u16string_view to) {
  return rename(toSystemPath(from).c_str(), toSystemPath(to).c_str()) == 0;
}

bool renameToFreeName(std::u16string_view from, std::u16string_view to) {
  const std::string source = toSystemPath(from);
  const std::string target = toSystemPath(to);
  if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system or kernel that cannot look and rename in one step.
  struct stat what = {};
  return lstat(target.c_str(), &what) != 0 && rename(source.c_str(), target.c_str()) == 0;
}

std::u16string followLinks(std::u16string_view path) {
  constexpr int most = 40;  // as the system follows
  std::string name = toSystemPath(path);
  for (int links = 0; links < most; ++links) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = readlink(name.c_str(), target.data(), target.size());
    if (length < 0) return links == 0 ? std::u16string(path) : fromSystemPath(name);
    target.resize(static_cast<std::size_t>(length));
    if (target.find('\\') != target.npos) break;  // our paths cannot name it
    if (!target.starts_with('/')) {
      const std::size_t slash = name.rfind('/');
      target.insert(0, slash == name.npos ? "./" : name.substr(0, slash + 1));
    }
    name = target;
  }
  return std::u16string(path);
}

bool prepareSuccessor(std::FILE* stream, std::u16string_view older) {
  struct stat what = {};
  if (!statOf(older, what)) return true;
  if (access(toSystemPath(older).c_str(), W_OK) != 0) return false;
  const int descriptor = fileno(stream);
  mode_t rights = what.st_mode & 0777;
  // Another group must not get what was the old one's.
  const bool given = fchown(descriptor, what.st_uid, what.st_gid) == 0 ||
                     fchown(descriptor, static_cast<uid_t>(-1), what.st_gid) == 0;
  if (!given) rights = (rights & 0707) | (rights & 07) << 3;
  fchmod(descriptor, rights);  // one that cannot be changed has no rights worth keeping
  return true;
}

std::int64_t fileSize(std::u16string_view path) {
  struct stat what = {};
  return statOf(path, what) && S_ISREG(what.st_mode) ? what.st_size : -1;
}

bool flushToDisk(std::FILE* stream) {
  return std::fflush(stream) == 0 && fsync(fileno(stream)) == 0;
}

bool MappedFile::open(std::u16string_view path) {
  close();
  const int descriptor = ::open(toSystemPath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return false;
  struct stat what = {};
  open_ = fstat(descriptor, &what) == 0 && S_ISREG(what.st_mode);
  if (open_ && what.st_size > 0) {
    const auto size = static_cast<std::size_t>(what.st_size);
    void* const view = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    open_ = view != MAP_FAILED;
    if (open_) {
      data_ = static_cast<const char*>(view);
      size_ = size;
    }
  }
  ::close(descriptor);
  return open_;
}

void MappedFile::close() {
  if (size_ > 0) munmap(const_cast<char*>(data_), size_);
  data_ = "";
  size_ = 0;
  open_ = false;
}

}  // namespace platform
