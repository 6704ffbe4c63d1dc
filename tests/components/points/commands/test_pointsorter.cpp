#include "components/points/commands/pointsorter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>

#include "components/points/commands/pointwork.h"
#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::Point;
using tests::SmallBlocks;
using Order = std::vector<uint32_t>;

Order orderOf(SmallBlocks& set, std::vector<int> axes, bool descending = false) {
  Order order;
  PointWork work;
  EXPECT_TRUE(PointSorter(std::move(axes), descending).find(set, order, work));
  return order;
}

TEST(PointSorter, SortsByOneAxisAndKeepsTheOrderOfEquals) {
  SmallBlocks set{{3, 0, 0}, {-1, 9, 0}, {3, 1, 0}, {0, 0, 0}, {-0.0, 5, 0}, {-1, 8, 0}};
  EXPECT_EQ(orderOf(set, {0}), (Order{1, 5, 3, 4, 0, 2}));
  EXPECT_EQ(orderOf(set, {0}, true), (Order{0, 2, 3, 4, 1, 5}));
}

TEST(PointSorter, FurtherAxesDecideBetweenEquals) {
  SmallBlocks set{{1, 2, 1}, {1, 1, 2}, {0, 5, 5}, {1, 1, 1}};
  EXPECT_EQ(orderOf(set, {0, 1, 2}), (Order{2, 3, 1, 0}));
  EXPECT_EQ(orderOf(set, {0, 1, 2}, true), (Order{0, 1, 3, 2}));
}

TEST(PointSorter, WhatIsNoNumberComesLastEitherWay) {
  const double inf = std::numeric_limits<double>::infinity();
  SmallBlocks set{{std::nan(""), 0, 0}, {inf, 0, 0}, {-inf, 0, 0}, {1, 0, 0}};
  EXPECT_EQ(orderOf(set, {0}), (Order{2, 3, 1, 0}));
  EXPECT_EQ(orderOf(set, {0}, true), (Order{1, 3, 2, 0}));
}

TEST(PointSorter, AgreesWithTheLibraryOnManyPoints) {
  std::mt19937 random(11);
  SmallBlocks set;
  for (int i = 0; i < 5000; ++i) {
    set.add({1.0 * (random() % 9), 1.0 * (random() % 9), 1.0 * (random() % 9)});
  }
  const std::vector<Point> points = set.points();
  Order wanted(points.size());
  std::iota(wanted.begin(), wanted.end(), 0);
  std::stable_sort(wanted.begin(), wanted.end(),
                   [&](uint32_t a, uint32_t b) { return points[a] < points[b]; });
  EXPECT_EQ(orderOf(set, {0, 1, 2}), wanted);
}

TEST(PointSorter, StopsWhenItIsTold) {
  std::mt19937 random(1);
  SmallBlocks set;
  for (int i = 0; i < 20000; ++i) set.add({1.0 * random(), 0, 0});
  Order order;
  PointWork work = tests::stoppingAfter(2);
  EXPECT_FALSE(PointSorter({0}, false).find(set, order, work));
}

TEST(PointSorter, AnEmptyCloudHasAnEmptyOrder) {
  SmallBlocks set;
  EXPECT_TRUE(orderOf(set, {2}).empty());
}

}  // namespace
