#include "components/points/commands/voxelthinner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "components/points/commands/pointwork.h"
#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::numbersOf;
using tests::SmallBlocks;

std::vector<int> keptOf(SmallBlocks& set, double edge) {
  BitVector kept;
  PointWork work;
  VoxelThinner thinner(edge);
  EXPECT_TRUE(thinner.fits(set));
  EXPECT_TRUE(thinner.find(set, kept, work));
  return numbersOf(kept);
}

TEST(VoxelThinner, KeepsThePointNearestToTheMiddleOfItsCube) {
  SmallBlocks set{{0.1, 0.1, 0.1}, {0.5, 0.5, 0.6}, {0.9, 0.9, 0.9}, {1.5, 0, 0}};
  EXPECT_EQ(keptOf(set, 1), (std::vector<int>{1, 3}));
}

TEST(VoxelThinner, OfEquallyNearPointsTheFirstStays) {
  SmallBlocks set{{0.25, 0.5, 0.5}, {0.75, 0.5, 0.5}};
  EXPECT_EQ(keptOf(set, 1), (std::vector<int>{0}));
}

TEST(VoxelThinner, ABorderBelongsToTheCubeAbove) {
  SmallBlocks set{{1, 0.5, 0.5}, {0.999, 0.5, 0.5}, {-0.5, 0.5, 0.5}, {0, 0.5, 0.5}};
  EXPECT_EQ(keptOf(set, 1), (std::vector<int>{0, 1, 2}));
}

TEST(VoxelThinner, WhatIsNoNumberIsInNoCube) {
  SmallBlocks set{{std::nan(""), 0, 0}, {1, 1, 1}, {0, INFINITY, 0}};
  EXPECT_EQ(keptOf(set, 1), (std::vector<int>{1}));
}

TEST(VoxelThinner, CubesThatCannotBeToldApartDoNotFit) {
  SmallBlocks set{{1e9, 0, 0}};
  EXPECT_TRUE(VoxelThinner(1e-6).fits(set));
  EXPECT_FALSE(VoxelThinner(1e-8).fits(set));
  EXPECT_FALSE(VoxelThinner(std::numeric_limits<double>::denorm_min()).fits(set));
}

TEST(VoxelThinner, AgreesWithATableOnManyPoints) {
  std::mt19937 random(3);
  SmallBlocks set;
  std::map<std::array<int, 3>, std::pair<double, int>> cells;
  for (int i = 0; i < 20000; ++i) {
    const auto draw = [&] { return random() % 8192 / 512.0 - 8; };
    const tests::Point p{draw(), draw(), draw()};
    set.add(p);
    std::array<int, 3> cell;
    double distance = 0;
    for (size_t axis = 0; axis < 3; ++axis) {
      cell[axis] = static_cast<int>(std::floor(p[axis]));
      distance += std::pow(p[axis] - cell[axis] - 0.5, 2);
    }
    const auto [at, isNew] = cells.emplace(cell, std::pair(distance, i));
    if (!isNew && distance < at->second.first) at->second = {distance, i};
  }
  std::vector<int> wanted;
  for (const auto& [cell, best] : cells) wanted.push_back(best.second);
  std::sort(wanted.begin(), wanted.end());
  EXPECT_EQ(keptOf(set, 1), wanted);
}

}  // namespace
