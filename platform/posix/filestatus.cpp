#include "platform/filestatus.h"

#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {

bool pathAllows(std::u16string_view path, int access) {
  int mode = F_OK;
  if ((access & accessWrite) != 0) mode |= W_OK;
  if ((access & accessRead) != 0) mode |= R_OK;
  return ::access(toSystemPath(path).c_str(), mode) == 0;
}

bool fileStatus(std::u16string_view path, FileStatus& status) {
  struct stat what = {};
  if (stat(toSystemPath(path).c_str(), &what) != 0) return false;
  status = {what.st_size, what.st_mtime, S_ISDIR(what.st_mode)};
  return true;
}

bool isSameFile(std::u16string_view one, std::u16string_view other) {
  struct stat first = {};
  struct stat second = {};
  return stat(toSystemPath(one).c_str(), &first) == 0 &&
         stat(toSystemPath(other).c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

}  // namespace platform
