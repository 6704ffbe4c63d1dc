#include "components/points/commands/pointmover.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::Point;
using tests::SmallBlocks;

// Points whose coordinates and colours tell their number; each third is selected.
SmallBlocks numbered(int count) {
  SmallBlocks set;
  std::vector<uint32_t> colors;
  for (int i = 0; i < count; ++i) {
    set.add({1.0 * i, 2.0 * i, -1.0 * i});
    colors.push_back(0xFF000000u + static_cast<uint32_t>(i));
    if (i % 3 == 0) set.selection().Set(i + 1);
  }
  set.colour(colors);
  return set;
}

void expectNumbers(SmallBlocks& set, const std::vector<int>& numbers) {
  const std::vector<Point> points = set.points();
  ASSERT_EQ(points.size(), numbers.size());
  std::vector<int> selected;
  for (size_t k = 0; k < numbers.size(); ++k) {
    EXPECT_EQ(points[k], (Point{1.0 * numbers[k], 2.0 * numbers[k], -1.0 * numbers[k]})) << k;
    EXPECT_EQ(set.colors()[k], 0xFF000000u + static_cast<uint32_t>(numbers[k])) << k;
    if (numbers[k] % 3 == 0) selected.push_back(static_cast<int>(k));
  }
  EXPECT_EQ(set.selected(), selected);
  EXPECT_EQ(set.colors().size(), numbers.size());
}

TEST(PointMover, KeepsWhatTheMaskHasWithColoursAndSelection) {
  std::mt19937 random(5);
  for (int round = 0; round < 50; ++round) {
    SmallBlocks set = numbered(40);
    BitVector mask;
    std::vector<int> wanted;
    for (int i = 0; i < 40; ++i) {
      if (random() % 4 < static_cast<unsigned>(round % 5)) {
        mask.Set(i + 1);
        wanted.push_back(i);
      }
    }
    EXPECT_EQ(PointMover::keep(set, mask), 40 - static_cast<int64_t>(wanted.size()));
    expectNumbers(set, wanted);
  }
}

TEST(PointMover, AMaskOfAllTouchesNothing) {
  SmallBlocks set = numbered(7);
  BitVector mask;
  mask.SetAll(7);
  EXPECT_EQ(PointMover::keep(set, mask), 0);
  EXPECT_EQ(set.owned(), 0);
}

TEST(PointMover, ItemsBehindThePointsAndItemZeroDoNotCount) {
  SmallBlocks set = numbered(3);
  BitVector mask(200);
  mask.Set(0);
  mask.Set(2);
  mask.Set(150);
  EXPECT_EQ(PointMover::keep(set, mask), 2);
  expectNumbers(set, {1});
  EXPECT_EQ(set.owned(), 1);
}

TEST(PointMover, ReordersPointsColoursAndSelection) {
  std::mt19937 random(9);
  SmallBlocks set = numbered(33);
  std::vector<int> wanted(33);
  std::iota(wanted.begin(), wanted.end(), 0);
  std::shuffle(wanted.begin(), wanted.end(), random);
  std::vector<uint32_t> order(wanted.begin(), wanted.end());
  PointMover::reorder(set, order);
  expectNumbers(set, wanted);
}

TEST(PointMover, AppendsWithColoursWhereBothHaveThem) {
  SmallBlocks set = numbered(3);
  SmallBlocks more = numbered(14);
  PointMover::append(set, more);
  EXPECT_EQ(set.count(), 17);
  EXPECT_EQ(set.points()[16], (Point{13, 26, -13}));
  EXPECT_EQ(set.colors()[16], 0xFF00000Du);
  EXPECT_EQ(set.selected(), (std::vector<int>{0, 3, 6, 9, 12, 15}));
  EXPECT_EQ(more.count(), 14);
}

TEST(PointMover, AppendingWithoutColoursDropsThem) {
  SmallBlocks set = numbered(3);
  SmallBlocks plain{{9, 9, 9}};
  PointMover::append(set, plain);
  EXPECT_FALSE(set.hasColors());
  SmallBlocks empty;
  SmallBlocks coloured = numbered(2);
  PointMover::append(empty, coloured);
  EXPECT_TRUE(empty.hasColors());
  EXPECT_EQ(empty.colors()[1], 0xFF000001u);
  SmallBlocks nothing;
  PointMover::append(coloured, nothing);
  EXPECT_TRUE(coloured.hasColors());
}

}  // namespace
