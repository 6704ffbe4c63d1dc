#include "components/points/commands/pointmover.h"

#include <algorithm>
#include <cstring>

#include "components/points/commands/pointset.h"
#include "orobasictypes/bitvector.h"

namespace {

constexpr int64_t kBlock = 4096;  // colours that are moved at once
constexpr size_t kPointBytes = 3 * sizeof(double);

// The stretches of set bits among the points: visit(first, size), numbers from 0.
template <class Visit>
void forEachStretch(const BitVector& mask, int64_t count, const Visit& visit) {
  int64_t first = 0;
  int64_t size = 0;
  mask.ForEachSet([&](int32_t item) {
    if (item < 1 || item > count) return;
    const int64_t at = item - 1;
    if (size == 0 || at != first + size) {
      if (size > 0) visit(first, size);
      first = at;
      size = 0;
    }
    ++size;
  });
  if (size > 0) visit(first, size);
}

// From low to high, so that a move downwards may overlap.
void movePoints(PointSet& set, int64_t from, int64_t to, int64_t size) {
  while (size > 0 && from != to) {
    int64_t fromSize = 0;
    int64_t toSize = 0;
    const double* const source = set.run(from, fromSize);
    double* const target = set.run(to, toSize);
    const int64_t piece = std::min({size, fromSize, toSize});
    std::memmove(target, source, static_cast<size_t>(piece) * kPointBytes);
    from += piece;
    to += piece;
    size -= piece;
  }
}

}  // namespace

void PointMover::keepColors(PointSet& set, const BitVector& mask) {
  std::vector<uint32_t> block(kBlock);
  int64_t to = 0;
  forEachStretch(mask, set.count(), [&](int64_t first, int64_t size) {
    while (size > 0) {
      const int64_t piece = std::min(size, kBlock);
      if (first != to) {
        set.getColors(first, piece, block.data());
        set.setColors(to, piece, block.data());
      }
      first += piece;
      to += piece;
      size -= piece;
    }
  });
}

int64_t PointMover::keep(PointSet& set, const BitVector& mask) {
  const int64_t before = set.count();
  int64_t kept = 0;
  forEachStretch(mask, before, [&](int64_t, int64_t size) { kept += size; });
  if (kept == before) return 0;
  set.own();
  if (set.hasColors()) keepColors(set, mask);
  int64_t to = 0;
  forEachStretch(mask, before, [&](int64_t first, int64_t size) {
    movePoints(set, first, to, size);
    to += size;
  });
  BitVector selected;
  int32_t item = 0;
  forEachStretch(mask, before, [&](int64_t first, int64_t size) {
    for (int64_t i = first; i < first + size; ++i) {
      ++item;
      if (set.selection().Test(static_cast<int32_t>(i + 1))) selected.Set(item);
    }
  });
  set.selection().Swap(selected);
  set.resize(kept);
  return before - kept;
}

void PointMover::reorderColors(PointSet& set, const std::vector<uint32_t>& order) {
  const int64_t count = set.count();
  std::vector<uint32_t> all(static_cast<size_t>(count));
  set.getColors(0, count, all.data());
  std::vector<uint32_t> block(kBlock);
  for (int64_t first = 0; first < count; first += kBlock) {
    const int64_t size = std::min(kBlock, count - first);
    for (int64_t i = 0; i < size; ++i) {
      block[static_cast<size_t>(i)] = all[order[static_cast<size_t>(first + i)]];
    }
    set.setColors(first, size, block.data());
  }
}

void PointMover::reorderSelection(PointSet& set, const std::vector<uint32_t>& order) {
  BitVector selected;
  for (size_t k = 0; k < order.size(); ++k) {
    if (set.selection().Test(static_cast<int32_t>(order[k] + 1))) {
      selected.Set(static_cast<int32_t>(k + 1));
    }
  }
  set.selection().Swap(selected);
}

// Along the cycles of the order, each point once; a place that is done points to itself.
void PointMover::reorderPoints(PointSet& set, std::vector<uint32_t>& order) {
  int64_t size = 0;
  for (uint32_t start = 0; start < order.size(); ++start) {
    if (order[start] == start) continue;
    double spare[3];
    std::memcpy(spare, set.run(start, size), kPointBytes);
    uint32_t place = start;
    while (order[place] != start) {
      const uint32_t from = order[place];
      std::memcpy(set.run(place, size), set.run(from, size), kPointBytes);
      order[place] = place;
      place = from;
    }
    std::memcpy(set.run(place, size), spare, kPointBytes);
    order[place] = place;
  }
}

void PointMover::reorder(PointSet& set, std::vector<uint32_t>& order) {
  set.own();
  if (set.hasColors()) reorderColors(set, order);
  if (set.selection().CountSet() > 0) reorderSelection(set, order);
  reorderPoints(set, order);
}

void PointMover::appendColors(PointSet& to, int64_t at, const PointSet& from) {
  std::vector<uint32_t> block(kBlock);
  for (int64_t first = 0; first < from.count(); first += kBlock) {
    const int64_t size = std::min(kBlock, from.count() - first);
    from.getColors(first, size, block.data());
    to.setColors(at + first, size, block.data());
  }
}

void PointMover::append(PointSet& to, PointSet& from) {
  const int64_t before = to.count();
  const bool colors = (to.hasColors() || before == 0) && (from.hasColors() || from.count() == 0) &&
                      (to.hasColors() || from.hasColors());
  to.own();
  to.setHasColors(colors);
  to.resize(before + from.count());
  for (int64_t first = 0, size = 0; first < from.count(); first += size) {
    const double* const source = from.run(first, size);
    int64_t room = 0;
    double* const target = to.run(before + first, room);
    size = std::min(size, room);
    std::memcpy(target, source, static_cast<size_t>(size) * kPointBytes);
  }
  if (colors && from.hasColors()) appendColors(to, before, from);
  from.selection().ForEachSet([&](int32_t item) {
    if (item >= 1 && item <= from.count()) {
      to.selection().Set(static_cast<int32_t>(before + item));
    }
  });
}
