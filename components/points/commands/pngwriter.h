// PngWriter: a picture as a PNG file.
#pragma once

#include <cstdint>
#include <vector>

class OroPath;

class PngWriter {
 public:
  // Rows from the top, three bytes a pixel. Null when the file is whole; otherwise the key of a
  // text that tells why it is not, with the file as %1, and an older file is untouched. Throws
  // std::bad_alloc.
  static const char* write(const OroPath& path, const std::vector<uint8_t>& pixels, int width,
                           int height);
};
