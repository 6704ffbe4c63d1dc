// LasGrid: the whole numbers of a LAS file as coordinates, and back.
//
//   const LasGrid grid(scale, offset);
//   double x = grid.coordinate(raw);
//   int64_t raw = grid.raw(x);
//
// For one axis. Where scale and offset are decimal (0.01 and 500000, say), a coordinate is the
// double nearest to the decimal number, as text would be read, and not the product, which misses it
// by a last bit now and then. A plain value; any thread.
#pragma once

#include <cstdint>

class LasGrid {
 public:
  static constexpr int kMostDecimals = 15;

  // Requires: both are finite and the scale is not 0.
  LasGrid(double scale, double offset);

  double coordinate(int32_t raw) const { return (raw * factor_ + shift_) / divisor_; }
  // The nearest whole number, whether or not it fits 32 bits; beyond 2^53 clipped to that.
  int64_t raw(double coordinate) const;

  // Digits behind the point that all coordinates can be told with, or -1.
  int decimals() const { return decimals_; }

  static double powerOfTen(int exponent);  // 0 to kMostDecimals

 private:
  double scale_;
  double offset_;
  double factor_;   // 1 where the grid is decimal, or the scale
  double shift_;    // the offset in steps, or the offset
  double divisor_;  // steps to a unit, or 1
  int decimals_ = -1;
};
