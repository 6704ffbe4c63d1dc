// PointSorter: finds the order of points along one or more axes.
//
//   PointSorter sorter({2, 0}, false);           // by z, then by x, upwards
//   if (sorter.find(set, order, work)) mover.reorder(set, order);
//
// Points that are equal along all of the axes keep their order. Coordinates that are no numbers
// come last. 16 bytes for each point while it works. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

class PointSet;
class PointWork;

class PointSorter {
 public:
  // Axes by weight, 0 to 2. Requires: there is one at least.
  PointSorter(std::vector<int> axes, bool descending)
      : axes_(std::move(axes)), descending_(descending) {}

  // order[k] is the number, from 0, of the point that comes k-th. False when the work was stopped.
  // Throws std::bad_alloc.
  bool find(PointSet& set, std::vector<uint32_t>& order, PointWork& work) const;

 private:
  struct Entry {
    uint64_t key;  // the coordinate along an axis, as a number that sorts alike
    uint32_t item;
  };

  class Watch;

  uint64_t keyOf(double value) const;
  void sort(PointSet& set, std::span<Entry> entries, size_t axis, Watch& watch) const;

  std::vector<int> axes_;
  bool descending_;
};
