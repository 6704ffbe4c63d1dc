// QuickSort_Compare: the order that quickSort brings an index into.
//
// Whoever has something to sort derives from it; the elements of the index are whatever this class
// understands, usually the numbers of records. The sort calls it on its own thread.
#pragma once

#include <cstdint>

class QuickSort_Compare {
 public:
  virtual ~QuickSort_Compare() = default;

  // Below 0: a stands before b; 0: they are equal; above 0: a stands behind b.
  virtual int32_t Compare(int32_t a, int32_t b) = 0;
};
