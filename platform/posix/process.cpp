#include "platform/process.h"

#include <cstddef>

#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {
namespace {

std::string executableBytes() {
  std::string path(256, '\0');
  for (;;) {
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length < 0) return {};
    if (static_cast<std::size_t>(length) < path.size()) {
      path.resize(static_cast<std::size_t>(length));
      return path;
    }
    path.resize(path.size() * 2);
  }
}

std::u16string cutToBuffer(std::u16string text, int maxUnits) {
  const std::size_t room = maxUnits > 0 ? static_cast<std::size_t>(maxUnits) - 1 : 0;
  if (text.size() > room) text.resize(room);
  return text;
}

struct ModuleList {
  std::vector<std::u16string>& paths;
  std::size_t maxModules;
  int maxUnits;
  bool programSeen;
};

// The program comes first, and without a name; other modules without one are the kernel's.
int addModule(dl_phdr_info* info, std::size_t, void* data) {
  auto& list = *static_cast<ModuleList*>(data);
  if (list.paths.size() >= list.maxModules) return 1;
  const std::string_view name = info->dlpi_name != nullptr ? info->dlpi_name : "";
  if (!list.programSeen) {
    list.programSeen = true;
    list.paths.push_back(executablePath(list.maxUnits));
  } else if (!name.empty()) {
    list.paths.push_back(cutToBuffer(fromSystem(name), list.maxUnits));
  }
  return 0;
}

}  // namespace

std::u16string executablePath(int maxUnits) {
  return cutToBuffer(fromSystem(executableBytes()), maxUnits);
}

std::vector<std::u16string> modulePaths(int maxModules, int maxUnits) {
  std::vector<std::u16string> paths;
  const std::size_t limit = maxModules > 0 ? static_cast<std::size_t>(maxModules) : 0;
  ModuleList list{paths, limit, maxUnits, false};
  dl_iterate_phdr(addModule, &list);
  return paths;
}

std::uint32_t processId() { return static_cast<std::uint32_t>(getpid()); }

NarrowArguments narrowArguments(int argc, char** argv) { return {argc, argv}; }

void* systemInstanceHandle() { return nullptr; }

std::optional<std::u16string> environmentWide(std::u16string_view name) {
  const char* value = getenv(toSystem(name).c_str());
  if (value == nullptr) return std::nullopt;
  return fromSystem(value);
}

bool setEnvironment(std::string_view name, std::optional<std::string_view> value) {
  const std::string key(name);
  if (!value) return unsetenv(key.c_str()) == 0;
  return setenv(key.c_str(), std::string(*value).c_str(), 1) == 0;
}

void reportRuntimeErrorsInBox() {}

bool versionBlock(std::u16string_view, std::vector<std::uint8_t>&) { return false; }

void ignoreBrokenPipes() { signal(SIGPIPE, SIG_IGN); }

void ignoreFileSizeLimit() { signal(SIGXFSZ, SIG_IGN); }

void fillStandardStreams() {
  for (const int descriptor : {0, 1, 2}) {
    if (fcntl(descriptor, F_GETFD) < 0) ::open("/dev/null", O_RDWR);  // takes the lowest free one
  }
}

}  // namespace platform
