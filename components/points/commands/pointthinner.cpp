#include "components/points/commands/pointthinner.h"

#include <algorithm>

#include "components/points/commands/seededrandom.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/sptr.h"

namespace {

// floor(a * b / c), of any counts of points.
int64_t scaled(int64_t a, int64_t b, int64_t c) {
  return static_cast<int64_t>(static_cast<__int128>(a) * b / c);
}

}  // namespace

void PointThinner::evenly(int64_t count, int64_t wanted, BitVector& kept) {
  kept.SetAll(static_cast<int32_t>(count));
  if (wanted >= count) return;
  kept.Zero();
  for (int64_t k = 0; k < wanted; ++k) {
    kept.Set(static_cast<int32_t>(scaled(k, count, wanted) + 1));
  }
}

void PointThinner::randomly(int64_t count, int64_t wanted, uint32_t seed, BitVector& kept) {
  kept.SetAll(static_cast<int32_t>(count));
  if (wanted >= count) return;
  const SPtr<IOroRandom> service;
  const IPtr<IOroRandom> source(service ? service.get() : new SeededRandom);
  source->seed(seed);
  kept.Zero();
  // Each point has the chance of what is still wanted among what is left.
  int64_t needed = wanted;
  for (int64_t i = 0; i < count && needed > 0; ++i) {
    const auto left = static_cast<int32_t>(count - i);
    if (source->next(left) >= needed) continue;
    kept.Set(static_cast<int32_t>(i + 1));
    --needed;
  }
}

int64_t PointThinner::share(int64_t before, int64_t count, int64_t whole, int64_t wanted) {
  if (whole <= 0) return 0;
  return scaled(before + count, wanted, whole) - scaled(before, wanted, whole);
}
