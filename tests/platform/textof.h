#pragma once

// Paths of std::filesystem in the form that the platform layer takes. For tests only.

#include <filesystem>
#include <string>

#include "platform/text.h"

namespace tests {

inline std::u16string textOf(const std::filesystem::path& path) {
  const std::u8string bytes = path.u8string();
  return platform::fromSystemPath({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

}  // namespace tests
