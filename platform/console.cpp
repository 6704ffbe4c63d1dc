#include "platform/console.h"

#include "platform/systempart.h"

namespace platform {

bool (*writeUsageToConsoleHook)(std::string_view) = nullptr;

bool writeUsageToConsole(std::string_view text) {
  if (writeUsageToConsoleHook != nullptr) return writeUsageToConsoleHook(text);
  return writeToParentConsole(text);
}

}  // namespace platform
