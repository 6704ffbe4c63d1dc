// VoxelThinner: cuts space into cubes and finds one point for each that holds any: the one nearest
// to the cube's middle, of equally near ones the first.
//
//   VoxelThinner thinner(0.25);
//   if (thinner.find(set, kept, work)) ...
//
// A cube's borders are multiples of its edge, so that clouds that are thinned one by one agree; a
// border belongs to the cube above it. Points whose coordinates are no numbers are in no cube and
// are not kept. Memory goes by the cubes that hold points, not by the space. One thread.
#pragma once

#include <cstdint>
#include <vector>

#include "components/points/commands/pointhash.h"

class BitVector;
class PointSet;
class PointWork;

class VoxelThinner {
 public:
  // The length of an edge, in the unit of the points. Requires: it is above 0 and finite.
  explicit VoxelThinner(double edge) : edge_(edge) {}

  // Whether cubes of this edge can be told apart out there: coordinates are at most 2^52 edges.
  bool fits(PointSet& set) const;
  // Sets the bits of the points that stay and clears all others. False when the work was stopped.
  // Throws std::bad_alloc when the cubes that hold points are too many. Requires: fits(set).
  bool find(PointSet& set, BitVector& kept, PointWork& work);

 private:
  struct Cell {
    int64_t at[3];
    friend bool operator==(const Cell&, const Cell&) = default;
  };
  struct Slot {
    uint32_t item = 0;    // the number of the point that stands for the cube, from 1; 0 is free
    uint32_t mark = 0;    // bits of the cube's hash that did not choose the place
    double distance = 0;  // to the middle, squared, in edges
  };

  Cell cellOf(const double* xyz) const;
  double distanceOf(const double* xyz, const Cell& cell) const;
  uint64_t hashOf(const Cell& cell) const;
  void enter(PointSet& set, const double* xyz, uint32_t item);
  void grow(PointSet& set);

  double edge_;
  PointHash hash_;
  std::vector<Slot> slots_;  // a power of two of them
  uint64_t used_ = 0;
};
