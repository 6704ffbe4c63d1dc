#include "components/points/commands/duplicatefinder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

#include "components/points/commands/pointwork.h"
#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::numbersOf;
using tests::Point;
using tests::SmallBlocks;

std::vector<int> firstsOf(SmallBlocks& set) {
  BitVector firsts;
  PointWork work;
  EXPECT_TRUE(DuplicateFinder().find(set, firsts, work));
  return numbersOf(firsts);
}

TEST(DuplicateFinder, KeepsTheFirstOfEach) {
  SmallBlocks set{{1, 2, 3}, {1, 2, 4}, {1, 2, 3}, {3, 2, 1}, {1, 2, 4}, {1, 2, 3}, {0, 0, 0}};
  EXPECT_EQ(firstsOf(set), (std::vector<int>{0, 1, 3, 6}));
}

TEST(DuplicateFinder, NothingIsEqualInAnEmptyCloud) {
  SmallBlocks set;
  EXPECT_TRUE(firstsOf(set).empty());
}

TEST(DuplicateFinder, ZeroHasNoSignAndWhatIsNoNumberEqualsItself) {
  const double nan = std::nan("");
  SmallBlocks set{{0, 0, 0}, {-0.0, 0, -0.0}, {nan, 0, 0}, {nan, 0, 0}, {INFINITY, 0, 0}};
  EXPECT_EQ(firstsOf(set), (std::vector<int>{0, 2, 4}));
}

TEST(DuplicateFinder, TheLastBitCounts) {
  SmallBlocks set{{1, 0, 0}, {std::nextafter(1, 2), 0, 0}};
  EXPECT_EQ(firstsOf(set), (std::vector<int>{0, 1}));
}

TEST(DuplicateFinder, AgreesWithASetOnManyPoints) {
  std::mt19937 random(7);
  SmallBlocks set;
  std::set<Point> seen;
  std::vector<int> wanted;
  for (int i = 0; i < 20000; ++i) {
    const Point point{random() % 20 * 0.25, random() % 20 * 0.5, 1.0 * (random() % 20)};
    set.add(point);
    if (seen.insert(point).second) wanted.push_back(i);
  }
  EXPECT_EQ(firstsOf(set), wanted);
}

TEST(DuplicateFinder, StopsWhenItIsTold) {
  SmallBlocks set;
  for (int i = 0; i < 1000; ++i) set.add({1.0 * i, 0, 0});
  BitVector firsts;
  PointWork work = tests::stoppingAfter(5);
  EXPECT_FALSE(DuplicateFinder().find(set, firsts, work));
}

}  // namespace
