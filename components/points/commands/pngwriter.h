// PngWriter: a picture as a PNG file.
#pragma once

#include <cstdint>
#include <vector>

#include "orobasictypes/orostring.h"

class OroPath;

class PngWriter {
 public:
  // Rows from the top, three bytes a pixel. False when the file is not whole; an older one is
  // untouched then. Throws std::bad_alloc.
  bool write(const OroPath& path, const std::vector<uint8_t>& pixels, int width, int height);

  // After a failure: the key of a text that tells it, with the file as %1, and what the system
  // said of it, perhaps nothing.
  const char* problem() const { return problem_; }
  const OroString& reason() const { return reason_; }

 private:
  bool fail(const char* key, const OroString& reason);

  const char* problem_ = nullptr;
  OroString reason_;
};
