// PngWriter: a picture as a PNG file.
#pragma once

#include <cstdint>
#include <vector>

class OroPath;

class PngWriter {
 public:
  // False where the build has no library for it.
  static bool isThere();
  // Rows from the top, three bytes a pixel. False when the file is not whole; an older one is then
  // untouched. Throws std::bad_alloc.
  static bool write(const OroPath& path, const std::vector<uint8_t>& pixels, int width, int height);
};
