#include "components/points/commands/pointsorter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"

namespace {

// Leaves the sort from within, whose entries are dropped then.
struct Stopped {};

constexpr int64_t kLookEvery = 4096;  // comparisons between two looks at the listener

}  // namespace

uint64_t PointSorter::keyOf(double value) const {
  if (std::isnan(value)) return UINT64_MAX;
  constexpr uint64_t kSign = uint64_t{1} << 63;
  const auto bits = std::bit_cast<uint64_t>(value + 0.0);  // -0 is 0
  const uint64_t upwards = (bits & kSign) != 0 ? ~bits : bits | kSign;
  return descending_ ? ~upwards : upwards;
}

bool PointSorter::before(PointSet& set, const Entry& a, const Entry& b) const {
  if (a.key != b.key) return a.key < b.key;
  if (axes_.size() > 1) {
    int64_t size = 0;
    const double* const one = set.run(a.item, size);
    const double* const other = set.run(b.item, size);
    for (size_t i = 1; i < axes_.size(); ++i) {
      const uint64_t left = keyOf(one[axes_[i]]);
      const uint64_t right = keyOf(other[axes_[i]]);
      if (left != right) return left < right;
    }
  }
  return a.item < b.item;
}

bool PointSorter::find(PointSet& set, std::vector<uint32_t>& order, PointWork& work) const {
  const int64_t count = set.count();
  std::vector<Entry> entries(static_cast<size_t>(count));
  for (int64_t first = 0, size = 0; first < count; first += size) {
    const double* const xyz = set.run(first, size);
    for (int64_t i = 0; i < size; ++i) {
      const auto item = static_cast<uint32_t>(first + i);
      entries[item] = {keyOf(xyz[3 * i + axes_[0]]), item};
    }
  }
  // About as many comparisons as there will be.
  const auto whole = static_cast<int64_t>(
      static_cast<double>(count) * std::log2(static_cast<double>(count) + 1) * 1.2 + 1);
  int64_t done = 0;
  try {
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
      if (++done % kLookEvery == 0 && !work.step(done, whole)) throw Stopped();
      return before(set, a, b);
    });
  } catch (const Stopped&) {
    return false;
  }
  order.resize(entries.size());
  for (size_t k = 0; k < entries.size(); ++k) order[k] = entries[k].item;
  return true;
}
