#include "components/points/commands/duplicatefinder.h"

#include <algorithm>
#include <bit>

#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"
#include "orobasictypes/bitvector.h"

namespace {

// So many places are asked for ahead of their use: waiting for memory is most of the work.
constexpr int64_t kAhead = 32;

// -0 becomes 0.
uint64_t wordOf(double value) { return std::bit_cast<uint64_t>(value + 0.0); }

bool samePlace(const double* a, const double* b) {
  return wordOf(a[0]) == wordOf(b[0]) && wordOf(a[1]) == wordOf(b[1]) &&
         wordOf(a[2]) == wordOf(b[2]);
}

}  // namespace

uint64_t DuplicateFinder::hashOf(const double* xyz) const {
  return hash_(wordOf(xyz[0]), wordOf(xyz[1]), wordOf(xyz[2]));
}

// True when no point with these coordinates was entered before.
bool DuplicateFinder::enter(PointSet& set, const double* xyz, uint32_t item, uint64_t hash) {
  const auto mark = static_cast<uint32_t>(hash >> 32);
  for (uint64_t place = hash & mask_;; place = (place + 1) & mask_) {
    Slot& slot = slots_[place];
    if (slot.item == 0) {
      slot = {item, mark};
      return true;
    }
    if (slot.mark != mark) continue;
    int64_t size = 0;
    if (samePlace(set.run(slot.item - 1, size), xyz)) return false;
  }
}

bool DuplicateFinder::find(PointSet& set, BitVector& firsts, PointWork& work) {
  const int64_t count = set.count();
  const uint64_t places =
      std::bit_ceil(static_cast<uint64_t>(std::max<int64_t>(count, 1)) * 3 / 2 + 1);
  slots_.assign(places, Slot{});
  mask_ = places - 1;
  firsts.Resize(static_cast<int32_t>(count));
  firsts.Zero();
  uint64_t hashes[kAhead];
  for (int64_t first = 0, size = 0; first < count; first += size) {
    const double* const xyz = set.run(first, size);
    size = std::min(size, kAhead);
    for (int64_t i = 0; i < size; ++i) {
      hashes[i] = hashOf(xyz + 3 * i);
      __builtin_prefetch(&slots_[hashes[i] & mask_], 1);
    }
    for (int64_t i = 0; i < size; ++i) {
      const auto item = static_cast<uint32_t>(first + i + 1);
      if (enter(set, xyz + 3 * i, item, hashes[i])) firsts.Set(static_cast<int32_t>(item));
    }
    if (!work.step(first + size, count)) break;
  }
  slots_ = {};
  return !work.isStopped();
}
