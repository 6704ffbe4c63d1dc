// Paths of std::filesystem as the system's strings take them, and line ends of this system.
#pragma once

#include <filesystem>
#include <string>

#include "orobasictypes/oropath.h"

namespace tests {

inline OroPath textOf(const std::filesystem::path& path) {
  return OroPath(OroString(path.u16string().c_str()));
}

// The text as a stream in text mode writes it here.
inline std::string systemLines(const std::string& text) {
  const bool twoBytes = std::filesystem::path::preferred_separator == '\\';
  std::string lines;
  for (const char c : text) lines += c == '\n' && twoBytes ? "\r\n" : std::string(1, c);
  return lines;
}

}  // namespace tests
