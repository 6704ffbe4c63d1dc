// Boxes and bounds.

#include <gtest/gtest.h>

#include <cmath>

#include "components/points/commands/pointbounds.h"
#include "components/points/commands/pointbox.h"
#include "components/points/commands/pointwork.h"
#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::numbersOf;
using tests::SmallBlocks;

const double kNan = std::nan("");

TEST(PointBox, HoldsItsBorders) {
  SmallBlocks set{{0, 0, 0}, {1, 1, 1}, {2, 0, 0}, {1, 0.5, 0}, {1, 1, 1.1}, {-0.0, 1, 1}};
  const PointBox box{{0, 0, 0}, {1, 1, 1}};
  BitVector inside;
  PointWork work;
  EXPECT_TRUE(box.find(set, inside, work));
  EXPECT_EQ(numbersOf(inside), (std::vector<int>{0, 1, 3, 5}));
}

TEST(PointBox, IsEverythingAtFirstButWhatIsNoNumber) {
  SmallBlocks set{{1e300, 0, 0}, {kNan, 0, 0}, {-INFINITY, 0, 0}};
  BitVector inside(99);
  inside.SetAll(99);
  PointWork work;
  EXPECT_TRUE(PointBox().find(set, inside, work));
  EXPECT_EQ(numbersOf(inside), (std::vector<int>{0, 2}));
}

TEST(PointBox, KnowsACornerOnTheWrongSide) {
  EXPECT_TRUE(PointBox().isSensible());
  EXPECT_TRUE((PointBox{{1, 1, 1}, {1, 1, 1}}.isSensible()));
  EXPECT_FALSE((PointBox{{1, 2, 1}, {1, 1, 1}}.isSensible()));
  EXPECT_FALSE((PointBox{{kNan, 1, 1}, {1, 1, 1}}.isSensible()));
}

TEST(PointBox, StopsWhenItIsTold) {
  SmallBlocks set;
  for (int i = 0; i < 100; ++i) set.add({1.0 * i, 0, 0});
  BitVector inside;
  PointWork work = tests::stoppingAfter(3);
  EXPECT_FALSE(PointBox().find(set, inside, work));
}

TEST(PointBounds, GathersCloudsAndLeavesOutWhatIsNoNumber) {
  SmallBlocks one{{1, 2, 3}, {kNan, 99, 99}, {INFINITY, 99, 99}};
  SmallBlocks other{{-1, 5, 2}};
  PointBounds bounds;
  EXPECT_FALSE(bounds.any());
  bounds.add(one);
  bounds.add(other);
  EXPECT_EQ(bounds.points(), 2);
  EXPECT_EQ(bounds.least()[0], -1);
  EXPECT_EQ(bounds.least()[1], 2);
  EXPECT_EQ(bounds.most()[1], 5);
  EXPECT_EQ(bounds.most()[2], 3);
}

TEST(PointBounds, TakesSelectedPointsAlone) {
  SmallBlocks set{{1, 1, 1}, {2, 2, 2}, {9, 9, 9}};
  BitVector mask;
  mask.Set(2);
  mask.Set(40);  // behind the points
  PointBounds bounds;
  bounds.add(set, mask);
  EXPECT_EQ(bounds.points(), 1);
  EXPECT_EQ(bounds.most()[0], 2);
}

}  // namespace
