#include "components/points/commands/pointbounds.h"

#include <algorithm>
#include <cmath>

#include "components/points/commands/pointset.h"
#include "orobasictypes/bitvector.h"

void PointBounds::add(const double* xyz) {
  if (!std::isfinite(xyz[0]) || !std::isfinite(xyz[1]) || !std::isfinite(xyz[2])) return;
  const bool first = points_++ == 0;
  for (int axis = 0; axis < 3; ++axis) {
    least_[axis] = first ? xyz[axis] : std::min(least_[axis], xyz[axis]);
    most_[axis] = first ? xyz[axis] : std::max(most_[axis], xyz[axis]);
  }
}

void PointBounds::add(PointSet& set) {
  for (int64_t first = 0, size = 0; first < set.count(); first += size) {
    const double* const xyz = set.run(first, size);
    for (int64_t i = 0; i < size; ++i) add(xyz + 3 * i);
  }
}

void PointBounds::add(PointSet& set, const BitVector& mask) {
  mask.ForEachSet([&](int32_t item) {
    if (item < 1 || item > set.count()) return;
    int64_t size = 0;
    add(set.run(item - 1, size));
  });
}
