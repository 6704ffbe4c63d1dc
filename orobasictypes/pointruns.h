// The points of an array as runs that lie in one piece, for the point arrays alone.
//
//   pointruns::forEach(array, [&](const OroVector* run, int32_t first, int32_t size) { .. });
//
// A run of null is `size` origins. What does not lie in blocks comes point by point, through Get.
// The array must not change its storage meanwhile, but for the run's own block.
#pragma once

#include <algorithm>
#include <cstdint>

#include "orobasictypes/array.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/realparray.h"

namespace pointruns {

// The element at i and those behind it in its block; null where they read as origins.
inline const OroVector* at(const OroMM::VectorArray& points, int32_t i) {
  if (i >= points.Size()) return nullptr;
  const OroVector* const block = points.Block(i >> OroMM::VectorArray::shift);
  return block != nullptr ? block + (i & OroMM::VectorArray::mask) : nullptr;
}

// The points from `first` to `last`.
template <class Visit>
void forEach(const OroMM::VectorArray& points, int64_t first, int64_t last, const Visit& visit) {
  while (first <= last) {
    const auto i = static_cast<int32_t>(first);
    const int32_t inBlock = OroMM::VectorArray::perBlock - (i & OroMM::VectorArray::mask);
    const auto size = static_cast<int32_t>(std::min<int64_t>(inBlock, last - first + 1));
    visit(at(points, i), i, size);
    first += size;
  }
}

template <class Visit>
void forEach(const OroMM::VectorArray& points, int32_t count, const Visit& visit) {
  forEach(points, 1, count, visit);
}

template <class Visit>
void forEach(const RealPArray& array, int64_t first, int64_t last, const Visit& visit) {
  if (const OroMM::VectorArray* const points = array.Blocks()) {
    return forEach(*points, first, last, visit);
  }
  OroVector point;
  for (int64_t i = first; i <= last; ++i) {
    array.Get(static_cast<int32_t>(i), point);
    visit(&point, static_cast<int32_t>(i), 1);
  }
}

// All points.
template <class Visit>
void forEach(const RealPArray& array, const Visit& visit) {
  forEach(array, 1, array.GetCount(), visit);
}

// The stretches of set bits among 1 to `last`: visit(first, size).
template <class Visit>
void forEachStretch(const BitVector& mask, int32_t last, const Visit& visit) {
  for (int32_t first = mask.NextSet(0); first > 0 && first <= last;) {
    const int32_t clear = mask.NextClear(first);
    const int32_t end = std::min(clear < 0 ? mask.MaximumBit() : clear - 1, last);
    visit(first, end - first + 1);
    if (clear < 0) return;
    first = mask.NextSet(clear);
  }
}

// The points that the mask has, of the first `count`.
template <class Visit>
void forEachMasked(const RealPArray& array, const BitVector& mask, int32_t count,
                   const Visit& visit) {
  forEachStretch(mask, count, [&](int32_t first, int32_t size) {
    forEach(array, first, int64_t{first} + size - 1, visit);
  });
}

}  // namespace pointruns
