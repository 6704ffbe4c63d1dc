#include "components/points/commands/pointsorter.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"

namespace {

// Leaves the sort from within, whose entries are dropped then.
struct Stopped {};

}  // namespace

// Counts the comparisons and looks at the listener now and then.
class PointSorter::Watch {
 public:
  // `points`: how many are sorted.
  Watch(PointWork& work, int64_t points)
      : work_(work),
        whole_(static_cast<int64_t>(
            static_cast<double>(points) * std::log2(static_cast<double>(points) + 1) * 1.2 + 1)) {}
  void count() {
    if (++done_ % kLookEvery == 0 && !work_.step(done_, whole_)) throw Stopped();
  }

 private:
  static constexpr int64_t kLookEvery = 4096;  // comparisons between two looks

  PointWork& work_;
  const int64_t whole_;  // about as many comparisons as there will be
  int64_t done_ = 0;
};

uint64_t PointSorter::keyOf(double value) const {
  if (std::isnan(value)) return UINT64_MAX;
  constexpr uint64_t kSign = uint64_t{1} << 63;
  const auto bits = std::bit_cast<uint64_t>(value + 0.0);  // -0 is 0
  const uint64_t upwards = (bits & kSign) != 0 ? ~bits : bits | kSign;
  return descending_ ? ~upwards : upwards;
}

// Sorts the entries by the keys that they hold, and those of equal keys by the next axis: the
// points themselves are looked at once for each axis.
void PointSorter::sort(PointSet& set, std::span<Entry> entries, size_t axis, Watch& watch) const {
  std::sort(entries.begin(), entries.end(), [&watch](const Entry& a, const Entry& b) {
    watch.count();
    return a.key != b.key ? a.key < b.key : a.item < b.item;
  });
  if (++axis == axes_.size()) return;
  for (size_t first = 0, end = 0; first < entries.size(); first = end) {
    while (end < entries.size() && entries[end].key == entries[first].key) ++end;
    if (end - first < 2) continue;
    const std::span<Entry> equal = entries.subspan(first, end - first);
    for (Entry& entry : equal) {
      int64_t size = 0;
      entry.key = keyOf(set.run(entry.item, size)[axes_[axis]]);
    }
    sort(set, equal, axis, watch);
  }
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
  try {
    Watch watch(work, count);
    sort(set, entries, 0, watch);
  } catch (const Stopped&) {
    return false;
  }
  order.resize(entries.size());
  for (size_t k = 0; k < entries.size(); ++k) order[k] = entries[k].item;
  return true;
}
