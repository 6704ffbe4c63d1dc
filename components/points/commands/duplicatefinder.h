// DuplicateFinder: finds the points that have the coordinates of an earlier one.
//
//   DuplicateFinder finder;
//   if (finder.find(set, first, work)) ...   // `first` has the points that are no repetition
//
// Coordinates are equal when their values are; 0 and -0 are equal, and so are two that are the same
// "no number". Colours are not looked at. One table of 8 bytes for each place, of which there are
// between 1.5 and 3 times as many as points; each point is looked up once. One thread.
#pragma once

#include <cstdint>
#include <vector>

#include "components/points/commands/pointhash.h"

class BitVector;
class PointSet;
class PointWork;

class DuplicateFinder {
 public:
  // Sets the bit of each point that is the first with its coordinates and clears all others. False
  // when the work was stopped. Throws std::bad_alloc when there is no room for the table.
  bool find(PointSet& set, BitVector& firsts, PointWork& work);

 private:
  struct Slot {
    uint32_t item = 0;  // the number of a point, from 1; 0 is free
    uint32_t mark = 0;  // bits of its hash that did not choose the place
  };

  uint64_t hashOf(const double* xyz) const;
  bool enter(PointSet& set, const double* xyz, uint32_t item, uint64_t hash);

  PointHash hash_;
  std::vector<Slot> slots_;  // a power of two of them
  uint64_t mask_ = 0;
};
