// PointCloud: the points of one loaded file, with or without a colour each.
//
// A plain value: coordinates as doubles in the file's own unit, colours as 0 to 255 a channel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct PointColor {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;
  friend bool operator==(const PointColor&, const PointColor&) = default;
};

struct PointPosition {
  double x = 0;
  double y = 0;
  double z = 0;
  friend bool operator==(const PointPosition&, const PointPosition&) = default;
};

struct PointCloud {
  static constexpr int kShortest = -1;

  std::vector<PointPosition> positions;
  std::vector<PointColor> colors;  // empty, or as many as positions
  // Digits behind the point that the source wrote its coordinates with, so that a save shows them
  // in the same way; kShortest where it had no fixed number.
  int decimals = kShortest;

  bool hasColors() const { return !colors.empty(); }
  size_t size() const { return positions.size(); }
};
