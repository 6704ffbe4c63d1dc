// PointMover: carries out what the commands decided: which points stay, in which order, what is
// appended. Colours and selection go with their points.
//
// Nothing here can be stopped halfway; a cloud is as before or as wanted. Each sees to it that who
// looks at the points from outside keeps what was seen (PointSet::own).
#pragma once

#include <cstdint>
#include <vector>

class BitVector;
class PointSet;

class PointMover {
 public:
  // Only the points that the mask has stay, in their order. Gives how many went.
  static int64_t keep(PointSet& set, const BitVector& mask);
  // Point order[k] comes to place k. Requires: each number from 0 to count - 1 once; the order is
  // used up. Throws std::bad_alloc before anything moved.
  static void reorder(PointSet& set, std::vector<uint32_t>& order);
  // All points of `from` come behind those of `to`. Colours stay where both have them, or one has
  // no points; otherwise they go.
  static void append(PointSet& to, PointSet& from);

 private:
  static void keepColors(PointSet& set, const BitVector& mask);
  static void reorderColors(PointSet& set, const std::vector<uint32_t>& order);
  static void reorderSelection(PointSet& set, const std::vector<uint32_t>& order);
  static void reorderPoints(PointSet& set, std::vector<uint32_t>& order);
  static void appendColors(PointSet& to, int64_t at, const PointSet& from);
};
