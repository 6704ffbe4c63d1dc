// Thinning to a number of points, and the gray of colours.

#include "components/points/commands/pointthinner.h"

#include <gtest/gtest.h>

#include "components/points/commands/pointgray.h"
#include "components/points/commands/seededrandom.h"
#include "orobasictypes/iptr.h"
#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::numbersOf;

TEST(PointThinner, EvenlyIsAtEqualStepsAndExactlySoMany) {
  BitVector kept;
  PointThinner::evenly(10, 5, kept);
  EXPECT_EQ(numbersOf(kept), (std::vector<int>{0, 2, 4, 6, 8}));
  for (const int64_t wanted : {0, 1, 3, 7, 99, 100}) {
    PointThinner::evenly(100, wanted, kept);
    EXPECT_EQ(kept.CountSet(), wanted);
  }
  PointThinner::evenly(10000019, 100000, kept);
  EXPECT_EQ(kept.CountSet(), 100000);
}

TEST(PointThinner, RandomlyIsExactlySoManyAndTheSameForASeed) {
  BitVector kept;
  BitVector again;
  BitVector other;
  PointThinner::randomly(1000, 300, 5, kept);
  PointThinner::randomly(1000, 300, 5, again);
  PointThinner::randomly(1000, 300, 6, other);
  EXPECT_EQ(kept.CountSet(), 300);
  EXPECT_TRUE(kept == again);
  EXPECT_FALSE(kept == other);
  EXPECT_LE(kept.PrevSet(kept.MaximumBit()), 1000);
  EXPECT_FALSE(kept.Test(0));
}

TEST(PointThinner, RandomlyFavoursNobody) {
  std::vector<int> chosen(20);
  for (uint32_t seed = 0; seed < 4000; ++seed) {
    BitVector kept;
    PointThinner::randomly(20, 5, seed, kept);
    for (int i : numbersOf(kept)) ++chosen[static_cast<size_t>(i)];
  }
  for (int times : chosen) EXPECT_NEAR(times, 1000, 120);
}

TEST(PointThinner, MoreThanThereAreKeepsAll) {
  BitVector kept;
  PointThinner::evenly(3, 9, kept);
  EXPECT_EQ(kept.CountSet(), 3);
  PointThinner::randomly(3, 9, 0, kept);
  EXPECT_EQ(kept.CountSet(), 3);
  PointThinner::randomly(0, 9, 0, kept);
  EXPECT_EQ(kept.CountSet(), 0);
}

TEST(PointThinner, SharesAddUpAndNoCloudGetsMoreThanItHas) {
  const int64_t sizes[] = {7, 0, 100, 1, 33, 2147483646};
  int64_t whole = 0;
  for (int64_t size : sizes) whole += size;
  for (const int64_t wanted : {int64_t{0}, int64_t{1}, int64_t{1000000}, whole - 1, whole}) {
    int64_t before = 0;
    int64_t sum = 0;
    for (int64_t size : sizes) {
      const int64_t share = PointThinner::share(before, size, whole, wanted);
      EXPECT_GE(share, 0);
      EXPECT_LE(share, size);
      sum += share;
      before += size;
    }
    EXPECT_EQ(sum, wanted);
  }
}

TEST(SeededRandom, StaysBelowItsLimit) {
  const IPtr<SeededRandom> random(new SeededRandom);
  random->seed(1);
  for (const int32_t n : {1, 2, 3, 2147483647}) {
    for (int i = 0; i < 100; ++i) {
      const int32_t value = random->next(n);
      EXPECT_GE(value, 0);
      EXPECT_LT(value, n);
    }
  }
}

TEST(PointGray, WeighsTheChannels) {
  EXPECT_EQ(PointGray::grayOf(0xFF0000FF), 0xFF4D4D4Du);  // red
  EXPECT_EQ(PointGray::grayOf(0xFF00FF00), 0xFF969696u);  // green
  EXPECT_EQ(PointGray::grayOf(0xFFFF0000), 0xFF1C1C1Cu);  // blue
  EXPECT_EQ(PointGray::grayOf(0xFFFFFFFF), 0xFFFFFFFFu);
  EXPECT_EQ(PointGray::grayOf(0x00000000), 0u);
}

TEST(PointGray, NeedsColours) {
  tests::SmallBlocks set{{1, 2, 3}, {4, 5, 6}};
  EXPECT_FALSE(PointGray::apply(set));
  set.colour({0xFF0000FF, 0xFF00FF00});
  EXPECT_TRUE(PointGray::apply(set));
  EXPECT_EQ(set.colors(), (std::vector<uint32_t>{0xFF4D4D4D, 0xFF969696}));
}

}  // namespace
