// kelGrowCapacity: the growth of arrays that may become very large.
//
// Doubling a buffer of hundreds of megabytes is how a program runs out of memory, so the larger the
// array is, the smaller its steps are. For arrays of moderate size there is kelGrowSize. A plain
// function, any thread.
#pragma once

#include <algorithm>
#include <cstdint>

// Makes `capacity`, in elements of `elementBytes` bytes, larger than `wanted`, which may be the
// last index to come; one that is larger already stays. At most 0x7FFFFFFF, and at least 1, unless
// elements have no size: then nothing changes. Always true.
constexpr bool kelGrowCapacity(int32_t wanted, int32_t& capacity, int32_t elementBytes) {
  if (elementBytes < 1) return true;
  const int64_t need = int64_t{wanted} * elementBytes;
  int64_t bytes = int64_t{std::max(capacity, 1)} * elementBytes;
  while (need >= bytes) {
    const int shift = bytes < 0x400000 ? 0 : bytes < 0x2000000 ? 1 : bytes < 0x10000000 ? 2 : 3;
    bytes += bytes >> shift;
  }
  capacity = static_cast<int32_t>(std::min<int64_t>(bytes / elementBytes, INT32_MAX));
  return true;
}
