#include "orobasictypes/kelgrowcapacity.h"

#include <gtest/gtest.h>

namespace {

int32_t grown(int32_t wanted, int32_t capacity, int32_t elementBytes) {
  EXPECT_TRUE(kelGrowCapacity(wanted, capacity, elementBytes));
  return capacity;
}

TEST(KelGrowCapacity, GrowsWhenTheWantedEqualsTheCapacity) {
  EXPECT_EQ(grown(10, 10, 4), 20);
  EXPECT_EQ(grown(9, 10, 4), 10);
  EXPECT_EQ(grown(20, 10, 4), 40);
  EXPECT_EQ(grown(79, 10, 4), 80);
}

TEST(KelGrowCapacity, MakesAtLeastOne) {
  EXPECT_EQ(grown(-5, 0, 4), 1);
  EXPECT_EQ(grown(0, 0, 4), 1);
  EXPECT_EQ(grown(1, 0, 4), 2);
  EXPECT_EQ(grown(3, -7, 24), 4);
}

TEST(KelGrowCapacity, TakesSmallerStepsTheMoreBytesThereAre) {
  constexpr int32_t mega = 0x100000;
  EXPECT_EQ(grown(4 * mega - 1, 4 * mega - 1, 1), 8 * mega - 2) << "below 4 MiB it doubles";
  EXPECT_EQ(grown(4 * mega, 4 * mega, 1), 6 * mega);
  EXPECT_EQ(grown(32 * mega - 2, 32 * mega - 2, 1), 48 * mega - 3);
  EXPECT_EQ(grown(32 * mega, 32 * mega, 1), 40 * mega);
  EXPECT_EQ(grown(256 * mega - 4, 256 * mega - 4, 1), 320 * mega - 5);
  EXPECT_EQ(grown(256 * mega, 256 * mega, 1), 288 * mega);
}

TEST(KelGrowCapacity, CountsTheStepsInBytesAndTheResultInElements) {
  // 24 * 174763 bytes are 4 MiB and 8 bytes: half as much is added.
  EXPECT_EQ(grown(174763, 174763, 24), (24 * 174763 * 3 / 2) / 24);
  EXPECT_EQ(grown(174762, 174762, 24), 2 * 174762);
}

TEST(KelGrowCapacity, StopsAtTheLargestIndex) {
  EXPECT_EQ(grown(INT32_MAX, 1, 1), INT32_MAX);
  EXPECT_EQ(grown(INT32_MAX, INT32_MAX, 8), INT32_MAX);
  EXPECT_EQ(grown(INT32_MAX - 1, 5, INT32_MAX), INT32_MAX);
}

TEST(KelGrowCapacity, KnowsNothingOfElementsWithoutASize) {
  EXPECT_EQ(grown(100, 10, 0), 10);
  EXPECT_EQ(grown(100, 0, -4), 0);
}

TEST(KelGrowCapacity, EndsStrictlyAboveTheWanted) {
  for (int32_t wanted = 0; wanted < 3000000; wanted += 997) {
    for (const int32_t bytes : {1, 4, 24, 4096})
      ASSERT_GT(grown(wanted, wanted / 2, bytes), wanted);
  }
}

}  // namespace
