// What a cloud says of itself beside its points, on its way between a file and the document.
//
// Plain values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "components/points/pointcolor.h"
#include "orobasictypes/orostring.h"

// A regular grid that all coordinates lie on: whole number * scale + offset, for x, y and z.
struct PointGrid {
  double scale[3] = {1, 1, 1};
  double offset[3] = {0, 0, 0};
  friend bool operator==(const PointGrid&, const PointGrid&) = default;
};

struct PointCloudHead {
  static constexpr int kShortest = -1;
  // The containers of the system count points in signed 32 bits, in whole blocks.
  static constexpr int64_t kMostPoints = 0x7FFFFFFF - 2048;

  OroString name;      // empty where the file has none for it
  int64_t count = -1;  // points, -1 while that is not known
  bool hasColors = false;
  int decimals = kShortest;       // digits behind the point that the coordinates are told with
  std::optional<PointGrid> grid;  // where the file has one
  double scale = 1;               // of the cloud's users' meaning
};
