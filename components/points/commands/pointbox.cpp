#include "components/points/commands/pointbox.h"

#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"
#include "orobasictypes/bitvector.h"

bool PointBox::find(PointSet& set, BitVector& inside, PointWork& work) const {
  const int64_t count = set.count();
  inside.Resize(static_cast<int32_t>(count));
  inside.Zero();
  for (int64_t first = 0, size = 0; first < count; first += size) {
    const double* const xyz = set.run(first, size);
    for (int64_t i = 0; i < size; ++i) {
      if (contains(xyz + 3 * i)) inside.Set(static_cast<int32_t>(first + i + 1));
    }
    if (!work.step(first + size, count)) return false;
  }
  return true;
}
