// PointGray: turns the colours of points to gray, by how bright the eye sees red, green and blue.
#pragma once

#include <cstdint>

class PointSet;

class PointGray {
 public:
  // 0.30 of red, 0.59 of green, 0.11 of blue, rounded; the fourth byte stays.
  static uint32_t grayOf(uint32_t color);
  // False where there are no colours.
  static bool apply(PointSet& set);
};
