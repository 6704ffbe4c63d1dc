#include "components/random/randomsource.h"

#include <array>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/iptr.h"
#include "tests/support/fakebroker.h"

namespace {

using testing::ElementsAre;

TEST(RandomSource, GivesThePublishedNumbers) {
  RandomSource source;
  source.seed(42);
  std::vector<uint32_t> drawn;
  for (int i = 0; i < 6; ++i) drawn.push_back(source.bits());
  EXPECT_THAT(drawn,
              ElementsAre(0xA15C02B7, 0x7B47F409, 0xBA1D3330, 0x83D2F293, 0xBFA4784B, 0xCBED606E));
}

TEST(RandomSource, BeginsAnewWithEachSeed) {
  RandomSource source;
  RandomSource other;
  for (int i = 0; i < 100; ++i) EXPECT_EQ(source.next(1000), other.next(1000));
  source.seed(7);
  other.seed(8);
  std::vector<int32_t> first;
  std::vector<int32_t> second;
  for (int i = 0; i < 20; ++i) {
    first.push_back(source.next(1 << 30));
    second.push_back(other.next(1 << 30));
  }
  EXPECT_NE(first, second);
  source.seed(7);
  for (const int32_t number : first) EXPECT_EQ(source.next(1 << 30), number);
}

TEST(RandomSource, StaysInItsRange) {
  RandomSource source;
  for (const int32_t n : {1, 2, 3, 1000, INT32_MAX}) {
    for (int i = 0; i < 1000; ++i) {
      const int32_t drawn = source.next(n);
      ASSERT_GE(drawn, 0);
      ASSERT_LT(drawn, n);
    }
  }
  EXPECT_EQ(source.next(0), 0);
  EXPECT_EQ(source.next(-5), 0);
}

// Without drawing again, numbers below a quarter of the range would come twice as often here.
TEST(RandomSource, FavoursNoNumber) {
  constexpr int32_t range = 0x60000000;
  constexpr int draws = 200000;
  RandomSource source;
  std::array<int, 3> thirds = {};
  for (int i = 0; i < draws; ++i) ++thirds[static_cast<size_t>(source.next(range) / (range / 3))];
  for (const int count : thirds) EXPECT_NEAR(count, draws / 3, 1500);
  std::array<int, 7> sevenths = {};
  for (int i = 0; i < draws; ++i) ++sevenths[static_cast<size_t>(source.next(7))];
  for (const int count : sevenths) EXPECT_NEAR(count, draws / 7, 1200);
}

TEST(RandomSource, ThinsEqualSelectionsEqually) {
  tests::FakeBroker broker;
  const IPtr<RandomSource> source(new RandomSource);
  broker.registerService(KelCString::borrow("IOroRandom"), source.get());
  BitVector first;
  first.SetAll(1000);
  BitVector second = first;
  first.KeepRandom(0.25, nullptr);
  source->next(10);
  second.KeepRandom(0.25, nullptr);
  EXPECT_EQ(first.CountSet(), 250);
  EXPECT_TRUE(first == second);
  second.SetAll(1000);
  second.KeepRandom(0.25, source.get());
  EXPECT_EQ(second.CountSet(), 250);
  EXPECT_FALSE(first == second);
}

}  // namespace
