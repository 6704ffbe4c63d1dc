#pragma once

// What the system tells of a file without opening it. Any thread.

#include <cstdint>
#include <string_view>

namespace platform {

/// What pathAllows asks for, as a sum; 0 asks for existence alone.
enum PathAccess : int { accessExists = 0, accessWrite = 2, accessRead = 4 };

/// True if the path exists and the user may do that with it.
bool pathAllows(std::u16string_view path, int access);

struct FileStatus {
  std::int64_t size;      ///< bytes; of no meaning for a directory
  std::int64_t modified;  ///< last change, in seconds since 1970 in universal time
  bool isDirectory;
};

/// False, and nothing stored, if there is no such file. Links are followed.
bool fileStatus(std::u16string_view path, FileStatus& status);

/// True if both paths lead to one file, by whatever names. False if either leads nowhere.
bool isSameFile(std::u16string_view one, std::u16string_view other);

}  // namespace platform
