// PointBox: an axis-parallel box, borders included, and the points in it.
//
// A plain value. A point whose coordinates are no numbers is in no box.
#pragma once

#include <limits>

class BitVector;
class PointSet;
class PointWork;

struct PointBox {
  static constexpr double kFar = std::numeric_limits<double>::infinity();

  double least[3] = {-kFar, -kFar, -kFar};
  double most[3] = {kFar, kFar, kFar};

  bool contains(const double* xyz) const {
    return xyz[0] >= least[0] && xyz[0] <= most[0] && xyz[1] >= least[1] && xyz[1] <= most[1] &&
           xyz[2] >= least[2] && xyz[2] <= most[2];
  }
  // No corner lies on the wrong side of the other.
  bool isSensible() const {
    return least[0] <= most[0] && least[1] <= most[1] && least[2] <= most[2];
  }

  // Sets the bits of the points inside and clears all others. False when the work was stopped.
  bool find(PointSet& set, BitVector& inside, PointWork& work) const;
};
