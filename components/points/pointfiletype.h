// Which point files there are, told by their extension.
#pragma once

#include <cstdint>

class OroPath;

// The codes by which a save names its file type; from 1000 on nothing is gathered for it.
enum class PointFileType : int32_t {
  text = 1,        // lines of numbers: xyz, txt, asc
  unknown = 1001,  // no type of this library
  native = 1015,   // the whole document in the application's own form
};

// By the extension, letter case aside.
PointFileType pointFileType(const OroPath& path);
