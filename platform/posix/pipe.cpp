#include "platform/pipe.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "platform/posix/posixgate.h"
#include "platform/process.h"
#include "platform/text.h"

namespace platform {

struct PipeSink::State {
  int descriptor;
};

namespace {

std::string pipeFile(std::u16string_view name) {
  constexpr std::u16string_view prefix = u"\\\\.\\pipe\\";
  name.remove_prefix(prefix.size());
  if (name.empty() || name.find(u'\0') != name.npos) return {};
  std::string leaf = toSystem(name);
  std::replace(leaf.begin(), leaf.end(), '\\', '/');
  const char* folder = getenv("TMPDIR");
  return std::string(folder != nullptr && *folder != '\0' ? folder : "/tmp") + "/" + leaf;
}

int openFifo(const std::string& file) {
  // Without a reader a blocking open would wait for one.
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return -1;
  const int flags = fcntl(descriptor, F_GETFL);
  struct stat what = {};
  if (fstat(descriptor, &what) == 0 && S_ISFIFO(what.st_mode) && flags >= 0 &&
      fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) == 0) {
    return descriptor;
  }
  ::close(descriptor);
  return -1;
}

int openSocket(const std::string& file) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (file.size() >= sizeof address.sun_path) return -1;
  std::memcpy(address.sun_path, file.c_str(), file.size() + 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return -1;
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    return descriptor;
  }
  ::close(descriptor);
  return -1;
}

}  // namespace

bool PipeSink::open(std::u16string_view name) {
  close();
  if (!namesPipe(name)) return false;
  const std::string file = pipeFile(name);
  struct stat what = {};
  if (file.empty() || stat(file.c_str(), &what) != 0) return false;
  const int descriptor = S_ISFIFO(what.st_mode)   ? openFifo(file)
                         : S_ISSOCK(what.st_mode) ? openSocket(file)
                                                  : -1;
  if (descriptor < 0) return false;
  ignoreBrokenPipes();
  state_ = new State{descriptor};
  return true;
}

bool PipeSink::writeBytes(const void* data, std::size_t size) {
  if (state_ == nullptr) return false;
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = ::write(state_->descriptor, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    next += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

void PipeSink::close() {
  if (state_ == nullptr) return;
  ::close(state_->descriptor);
  delete state_;
  state_ = nullptr;
}

}  // namespace platform
