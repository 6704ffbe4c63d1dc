#include <cstdint>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/blockbitvector.h"

namespace {

using testing::ElementsAre;

constexpr int32_t all = 32768;  // bits of a block

std::vector<int32_t> setBits(const BlockBitVector& bits) {
  std::vector<int32_t> result;
  bits.ForEachSet([&](int32_t b) { result.push_back(b); });
  return result;
}

// Each thread changes copies of its own, of blocks that all of them begin with.
TEST(BlockBitVectorThreads, MayChangeCopiesOfOneVector) {
  BlockBitVector bits(BitVector(4 * all - 1));
  for (const int32_t b : {5, 9, 70000, 100000}) bits.Set(b);
  bits |= BlockBitVector(bits);  // counts its blocks
  const BlockBitVector& source = bits;
  const BlockBitVector third = [] {
    BitVector range(4 * all - 1);
    range.SetRange(3 * all, 4 * all - 1);
    return BlockBitVector(range);
  }();
  const auto work = [&](uint32_t seed) {
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
      BlockBitVector copy(source);
      BlockBitVector second(copy);
      std::set<int32_t> expected = {5, 9, 70000, 100000};
      for (int i = 0; i < 5; ++i) {
        const auto b = static_cast<int32_t>(random() % 2 * 70000 + random() % 1000);
        EXPECT_EQ(copy.Set(b), expected.insert(b).second);
      }
      second -= third;
      EXPECT_THAT(setBits(copy), testing::ElementsAreArray(expected));
      EXPECT_THAT(setBits(second), ElementsAre(5, 9, 70000));
      copy = second;
      EXPECT_TRUE(copy.Clear(9));
      EXPECT_THAT(setBits(second), ElementsAre(5, 9, 70000));
      EXPECT_THAT(setBits(copy), ElementsAre(5, 70000));
    }
  };
  std::vector<std::thread> threads;
  for (uint32_t seed = 0; seed < 4; ++seed) threads.emplace_back(work, seed);
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(setBits(bits), ElementsAre(5, 9, 70000, 100000));
}

}  // namespace
