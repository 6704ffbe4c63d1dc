// The clouds of the document as plain lists, and back, for tests.
#pragma once

#include <vector>

#include "components/points/pointcloud.h"

namespace tests {

inline std::vector<OroVector> positionsOf(const PointCloud& cloud) {
  std::vector<double> xyz(static_cast<size_t>(cloud.count()) * 3);
  cloud.positions(1, cloud.count(), xyz.data());
  std::vector<OroVector> positions;
  for (size_t i = 0; i < xyz.size(); i += 3) positions.emplace_back(xyz[i], xyz[i + 1], xyz[i + 2]);
  return positions;
}

// None where the cloud has no colours.
inline std::vector<PointColor> colorsOf(const PointCloud& cloud) {
  std::vector<PointColor> colors(static_cast<size_t>(cloud.hasColors() ? cloud.count() : 0));
  cloud.colors(1, static_cast<int32_t>(colors.size()), colors.data());
  return colors;
}

inline std::vector<int32_t> selected(const BitVector& bits) {
  std::vector<int32_t> all;
  bits.ForEachSet([&all](int32_t i) { all.push_back(i); });
  return all;
}

inline void fill(PointCloud& cloud, const std::vector<OroVector>& positions,
                 const std::vector<PointColor>& colors = {}, int decimals = 0) {
  std::vector<double> xyz;
  for (const OroVector& p : positions) xyz.insert(xyz.end(), {p.x, p.y, p.z});
  cloud.add(xyz.data(), colors.empty() ? nullptr : colors.data(),
            static_cast<int32_t>(positions.size()));
  cloud.decimals = decimals;
}

}  // namespace tests
