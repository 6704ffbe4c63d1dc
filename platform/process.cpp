#include "platform/process.h"

#include <atomic>
#include <cstdlib>

#include "platform/text.h"

namespace platform {
namespace {

void* keptInstanceHandle = nullptr;

}  // namespace

void (*endProcessHook)(int) = nullptr;
void (*endProcessNowHook)(int) = nullptr;

void storeInstanceHandle(void* handle) { keptInstanceHandle = handle; }

void* instanceHandle() { return keptInstanceHandle; }

std::optional<std::string> environment(std::string_view name) {
  const auto wide = environmentWide(fromSystem(name));
  if (!wide) return std::nullopt;
  return toSystem(*wide);
}

void endProcess(int status) {
  if (endProcessHook != nullptr) endProcessHook(status);
  // The exit handlers run once; one of them, or another thread, may come here as well.
  static std::atomic<bool> ending{false};
  if (ending.exchange(true)) endProcessNow(status);
  std::exit(status);
}

void endProcessNow(int status) {
  if (endProcessNowHook != nullptr) endProcessNowHook(status);
  std::_Exit(status);
}

}  // namespace platform
