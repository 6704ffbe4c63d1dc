// PointInput: where the bytes of a point file come from, front to back.
//
// One thread.
#pragma once

#include <cstddef>
#include <cstdint>

class PointInput {
 public:
  virtual ~PointInput() = default;

  // Fills up to `size` bytes; 0 at the end and after a failure.
  virtual size_t read(char* buffer, size_t size) = 0;
  // Bytes of the whole, 0 for what has no size.
  virtual int64_t size() const = 0;
  // True when the system could not deliver what the file holds.
  virtual bool failed() const = 0;
  // Begins again at the front. False for what can be read once only.
  virtual bool restart() = 0;
};
