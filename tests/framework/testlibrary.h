// Component libraries of the tests, by the form of path that the component manager takes.
#pragma once

#include <filesystem>

#include "orobasictypes/oropath.h"
#include "platform/text.h"
#include "tests/testpaths.h"

namespace tests {

inline OroString wideTextOf(const std::filesystem::path& path) {
  const std::u8string bytes = path.u8string();
  const std::u16string text =
      platform::fromSystemPath({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  return OroString(text.c_str());
}

// The path of a test library without its suffix.
inline OroString testLibrary(const char* name) { return wideTextOf(testLibsDir() / name); }

}  // namespace tests
