// PointBounds: the smallest box around points, gathered cloud by cloud.
//
//   PointBounds bounds;
//   bounds.add(set);
//   if (bounds.any()) use(bounds.least(), bounds.most());
//
// Coordinates that are no numbers, or infinite, are left out point by point. A plain value.
#pragma once

#include <cstdint>

class BitVector;
class PointSet;

class PointBounds {
 public:
  void add(const double* xyz);
  void add(PointSet& set);
  // Only the points that the mask has.
  void add(PointSet& set, const BitVector& mask);

  bool any() const { return points_ > 0; }
  int64_t points() const { return points_; }  // that were taken
  // Requires: any().
  const double* least() const { return least_; }
  const double* most() const { return most_; }

 private:
  int64_t points_ = 0;
  double least_[3] = {0, 0, 0};
  double most_[3] = {0, 0, 0};
};
