#include "platform/files.h"

#include <atomic>

#include "platform/clock.h"
#include "platform/process.h"

namespace platform {

// Short whatever the target is called, so that it never is longer than a name may be.
std::u16string temporaryNameBeside(std::u16string_view target) {
  static std::atomic<unsigned> counter{0};
  const std::size_t separator = target.find_last_of(u"\\/");
  const std::u16string_view folder =
      separator == target.npos ? std::u16string_view() : target.substr(0, separator + 1);
  for (;;) {
    char leaf[64];
    std::snprintf(leaf, sizeof leaf, "~oro-%08x-%08x-%x.tmp", processId(),
                  static_cast<unsigned>(steadyNanoseconds()), counter++);
    std::u16string name(folder);
    for (const char* c = leaf; *c != '\0'; ++c) name += static_cast<char16_t>(*c);
    if (!pathExists(name)) return name;
  }
}

}  // namespace platform
