#include "components/points/commands/pointwork.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(PointWork, TellsAFractionOnceAndWithinItsRange) {
  std::vector<double> told;
  PointWork work([&](double fraction) {
    told.push_back(fraction);
    return true;
  });
  work.setRange(0.5, 1);
  EXPECT_TRUE(work.step(1, 4));
  EXPECT_TRUE(work.step(1, 4));
  EXPECT_TRUE(work.step(9, 4));
  EXPECT_EQ(told, (std::vector<double>{0.625, 1}));
}

TEST(PointWork, AsksAtMostOnceForEachPartInAThousand) {
  int asked = 0;
  PointWork work([&](double) { return ++asked > 0; });
  for (int64_t i = 0; i <= 10000000; i += 10) work.step(i, 10000000);
  EXPECT_EQ(asked, 1001);
}

TEST(PointWork, StaysStopped) {
  PointWork work([](double fraction) { return fraction < 0.5; });
  EXPECT_TRUE(work.step(1, 4));
  EXPECT_FALSE(work.step(2, 4));
  EXPECT_FALSE(work.step(1, 4));
  EXPECT_TRUE(work.isStopped());
}

TEST(PointWork, GoesOnWithoutAListenerAndWithoutAnythingToDo) {
  PointWork silent;
  EXPECT_TRUE(silent.step(1, 1));
  PointWork refusing([](double) { return false; });
  EXPECT_TRUE(refusing.step(0, 0));
}

}  // namespace
