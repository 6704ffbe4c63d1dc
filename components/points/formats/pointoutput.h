// PointOutput: where the bytes of a point file go, front to back.
//
// One thread.
#pragma once

#include <cstddef>

class PointOutput {
 public:
  virtual ~PointOutput() = default;

  // Takes all of it, or is false.
  virtual bool write(const char* bytes, size_t size) = 0;
};
