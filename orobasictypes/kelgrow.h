// kelGrowSize: the one rule by which every growable array of the system takes its next capacity.
//
// Doubling keeps the number of reallocations logarithmic. Pass the needed size to kelRealloc as the
// minimum and this as the maximum, so that under pressure an array gets what it needs rather than
// what it would like. A plain function, any thread.
#pragma once

#include <cstdint>

// The capacity itself when it suffices; else the doubled capacity (from at least 1) that does. From
// 0x40000000 on nothing can be doubled any more, and the result is `needed`.
constexpr int32_t kelGrowSize(int32_t capacity, int32_t needed) {
  if (capacity >= needed) return capacity;
  int32_t size = capacity < 1 ? 1 : capacity;
  while (size < needed) {
    if (size >= 0x40000000) return needed;
    size *= 2;
  }
  return size;
}
