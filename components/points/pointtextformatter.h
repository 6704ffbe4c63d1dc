// PointTextFormatter: writes points as lines of text, "x y z" or "x y z r g b", blank between.
//
// Each coordinate reads back as exactly the same double: with the given number of digits behind
// the point where that is enough, otherwise in the shortest form that is. No allocation, one
// thread; the caller brings the buffer.
#pragma once

#include <cstddef>

#include "components/points/pointcloud.h"

class PointTextFormatter {
 public:
  // Room that a line never exceeds, bytes.
  static constexpr size_t kLineRoom = 128;

  // `decimals` from 0 to 15, or PointCloud::kShortest.
  explicit PointTextFormatter(int decimals);

  // Writes the line of three coordinates with its line feed and gives the end. Requires: kLineRoom
  // bytes at `out`. `color` may be null.
  char* line(char* out, const double* position, const PointColor* color) const;

 private:
  char* real(char* out, double value) const;

  int decimals_;
  double scale_;  // 10 to the power of decimals_
};
