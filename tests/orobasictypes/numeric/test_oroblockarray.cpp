#include "orobasictypes/oroblockarray.h"

#include <cstring>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fakeheap.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr uint32_t shift = 12;  // of integers, 4096 to a block
constexpr int32_t block = 4096;

// A bare table of integers.
struct Table {
  explicit Table(int32_t size, bool clear = true) : size(size) {
    OroBlockArray::Make(blocks, 4, shift, size, capacity, clear);
  }
  ~Table() { OroBlockArray::Destroy(blocks, shift, size); }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  void resize(int32_t newSize, int32_t maximum, bool clear = true) {
    OroBlockArray::Resize(blocks, 4, shift, size, newSize, maximum, capacity, clear);
  }
  int32_t& at(int32_t i) { return static_cast<int32_t*>(blocks[i >> shift])[i & (block - 1)]; }
  void fill() {
    for (int32_t i = 0; i < size; ++i) at(i) = i + 1;
  }
  bool holdsFirst(int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      if (at(i) != i + 1) return false;
    }
    return true;
  }

  void** blocks = nullptr;
  int32_t size;
  int32_t capacity = -1;
};

TEST(KelBlockShift, MakesBlocksOfSixteenKilobytes) {
  EXPECT_EQ(kelBlockShift(4), 12U);
  EXPECT_EQ(kelBlockShift(1), 14U);
  EXPECT_EQ(kelBlockShift(8), 11U);
  EXPECT_EQ(kelBlockShift(24), 10U) << "the first that reaches it";
  EXPECT_EQ(kelBlockShift(16383), 1U);
  EXPECT_EQ(kelBlockShift(16384), 0U);
  EXPECT_EQ(kelBlockShift(100000), 0U);
  EXPECT_EQ(kelBlockShift(0), 14U) << "no element is smaller than a byte";
}

TEST(OroBlockTable, HasALastBlockOfItsExactLength) {
  tests::FakeHeap heap;
  const Table whole(block);
  EXPECT_EQ(whole.capacity, 1);
  EXPECT_THAT(heap.sizes, ElementsAre(8, 16384));
  heap.sizes.clear();
  const Table more(block + 1);
  EXPECT_EQ(more.capacity, 2);
  EXPECT_THAT(heap.sizes, ElementsAre(16, 16384, 4));
  heap.sizes.clear();
  const Table none(0);
  EXPECT_EQ(none.capacity, 0);
  EXPECT_THAT(heap.sizes, IsEmpty());
}

TEST(OroBlockTable, IsFreedBlockByBlock) {
  tests::FakeHeap heap;
  { const Table table(2 * block + 5); }
  EXPECT_EQ(heap.frees, 4);
}

TEST(OroBlockTable, IsClearedWhenAsked) {
  tests::FakeHeap heap;
  heap.fillsBlocks = true;
  Table table(block + 10);
  for (int32_t i = 0; i < table.size; ++i) ASSERT_EQ(table.at(i), 0);
  table.resize(2 * block + 10, -1, true);
  for (int32_t i = 0; i < table.size; ++i) ASSERT_EQ(table.at(i), 0);
  table.resize(3 * block + 10, -1, false);
  EXPECT_EQ(table.at(2 * block + 9), 0);
  EXPECT_EQ(table.at(3 * block - 1), 0) << "the rest of the block that was the last";
  EXPECT_NE(table.at(3 * block), 0) << "nobody asked for zeros";
  Table raw(10, false);
  EXPECT_NE(raw.at(9), 0);
  table.fill();
  OroBlockArray::ClearAll(table.blocks, 4, shift, table.size, false);
  EXPECT_TRUE(table.holdsFirst(table.size));
  OroBlockArray::ClearAll(table.blocks, 4, shift, table.size, true);
  for (int32_t i = 0; i < table.size; ++i) ASSERT_EQ(table.at(i), 0);
}

TEST(OroBlockTable, IsCopied) {
  Table table(2 * block + 7);
  table.fill();
  int32_t capacity = 0;
  void** copy = OroBlockArray::Copy(table.blocks, 4, shift, table.size, capacity);
  EXPECT_EQ(capacity, 3);
  EXPECT_NE(copy[0], table.blocks[0]);
  EXPECT_EQ(std::memcmp(copy[1], table.blocks[1], 16384), 0);
  EXPECT_EQ(std::memcmp(copy[2], table.blocks[2], 28), 0);
  OroBlockArray::Destroy(copy, shift, table.size);
}

TEST(OroBlockTable, TakesAnyElementSize) {
  void** blocks = nullptr;
  int32_t capacity = 0;
  int32_t size = 1030;
  tests::FakeHeap heap;
  OroBlockArray::Make(blocks, 24, 10, size, capacity, true);
  EXPECT_THAT(heap.sizes, ElementsAre(16, 24576, 144));
  OroBlockArray::Resize(blocks, 24, 10, size, 2048, -1, capacity, true);
  EXPECT_EQ(heap.sizes.back(), 24576U);
  OroBlockArray::Destroy(blocks, 10, size);
}

TEST(OroBlockTableResize, BelowZeroTakesTheSizeAsItIs) {
  Table table(block);
  table.resize(block + 5, -1);
  EXPECT_EQ(table.size, block + 5);
  table.resize(10, -1);
  EXPECT_EQ(table.size, 10);
  tests::FakeHeap heap;
  table.resize(10, -1);
  EXPECT_THAT(heap.sizes, IsEmpty());
  EXPECT_EQ(heap.frees, 0);
}

TEST(OroBlockTableResize, AMaximumBecomesTheSize) {
  Table table(100);
  table.resize(200, 500);
  EXPECT_EQ(table.size, 500);
  table.resize(500, 9000);
  EXPECT_EQ(table.size, 500) << "the size asked for is there";
  table.resize(200, 500);
  EXPECT_EQ(table.size, 500) << "and a larger one within the maximum stays";
  table.resize(200, 300);
  EXPECT_EQ(table.size, 300) << "one above the maximum becomes it";
  table.resize(400, 350);
  EXPECT_EQ(table.size, 350) << "even where that is less than was asked for";
}

TEST(OroBlockTableResize, ZeroNeverShrinks) {
  Table table(100);
  table.resize(50, 0);
  EXPECT_EQ(table.size, 100);
  table.resize(100, 0);
  EXPECT_EQ(table.size, 100);
}

TEST(OroBlockTableResize, ZeroGrowsToTwiceTheSizeOrTheNextBlock) {
  Table small(100);
  small.resize(101, 0);
  EXPECT_EQ(small.size, 200);
  Table large(3 * block);
  large.resize(3 * block + 1, 0);
  EXPECT_EQ(large.size, 4 * block);
  Table exact(3 * block);
  exact.resize(4 * block, 0);
  EXPECT_EQ(exact.size, 5 * block) << "an exact multiple gets a whole block more";
  Table empty(0);
  empty.resize(5, 0);
  EXPECT_EQ(empty.size, 8);
}

TEST(OroBlockTableResize, GrowsTheLastBlockAlone) {
  Table table(block + 1);
  table.fill();
  tests::FakeHeap heap;
  heap.fillsBlocks = true;
  table.resize(block + 4, -1, false);
  EXPECT_THAT(heap.sizes, ElementsAre(16));
  EXPECT_EQ(heap.reallocations, 1);
  EXPECT_TRUE(table.holdsFirst(block + 1));
  for (int32_t i = block + 1; i < table.size; ++i) EXPECT_EQ(table.at(i), 0) << "asked for or not";
}

TEST(OroBlockTableResize, GrowsByWholeBlocksAndARest) {
  Table table(block + 1);
  table.fill();
  tests::FakeHeap heap;
  table.resize(3 * block + 2, -1);
  EXPECT_THAT(heap.sizes, ElementsAre(32, 16384, 16384, 8));
  EXPECT_EQ(table.capacity, 4);
  EXPECT_TRUE(table.holdsFirst(block + 1));
  for (int32_t i = block + 1; i < table.size; ++i) ASSERT_EQ(table.at(i), 0);
}

TEST(OroBlockTableResize, DoublesATableThatIsTooSmall) {
  Table table(3 * block);
  EXPECT_EQ(table.capacity, 3);
  table.resize(4 * block, -1);
  EXPECT_EQ(table.capacity, 6);
  table.resize(6 * block, -1);
  EXPECT_EQ(table.capacity, 6);
  Table empty(0);
  empty.resize(5 * block, -1);
  EXPECT_EQ(empty.capacity, 5) << "an empty one takes what is needed";
}

TEST(OroBlockTableResize, SettlesForASmallerTableThatSuffices) {
  Table table(3 * block);
  tests::FakeHeap heap;
  heap.refuseUpToCall = 1;
  table.resize(4 * block, -1);
  EXPECT_EQ(heap.sizes.at(0), 6 * sizeof(void*));
  EXPECT_EQ(heap.sizes.at(1), 5 * sizeof(void*));
  EXPECT_EQ(table.capacity, 5);
}

TEST(OroBlockTableResize, ShrinksATableOfWhichLessThanHalfIsUsed) {
  Table table(8 * block);
  table.resize(7 * block, -1);
  EXPECT_EQ(table.capacity, 8);
  table.resize(4 * block, -1);
  EXPECT_EQ(table.capacity, 8) << "exactly half stays";
  table.resize(2 * block, -1);
  EXPECT_EQ(table.capacity, 2);
  table.resize(0, -1);
  EXPECT_EQ(table.capacity, 0);
  EXPECT_EQ(table.blocks, nullptr);
  table.resize(5, -1);
  EXPECT_EQ(table.at(4), 0);
}

TEST(OroBlockTableResize, ShrinksTheBlockThatBecomesTheLast) {
  Table table(3 * block + 100);
  table.fill();
  tests::FakeHeap heap;
  table.resize(block + 10, -1);
  EXPECT_EQ(heap.frees, 2);
  EXPECT_THAT(heap.sizes, ElementsAre(40));
  EXPECT_TRUE(table.holdsFirst(block + 10));
  heap.sizes.clear();
  table.resize(block + 5, -1);
  EXPECT_THAT(heap.sizes, ElementsAre(20));
  table.resize(block, -1);
  EXPECT_EQ(heap.frees, 3);
  EXPECT_TRUE(table.holdsFirst(block));
}

TEST(OroBlockTableResize, TakesASizeBelowZeroAsNone) {
  Table table(10);
  table.resize(-5, -1);
  EXPECT_EQ(table.size, 0);
}

TEST(OroBlockArray, HasItsFieldsInOrder) {
  static_assert(sizeof(OroBlockArray) == 24);
  const OroBlockArray array(5000);
  int32_t fields[4];
  std::memcpy(fields, reinterpret_cast<const char*>(&array), sizeof fields);
  EXPECT_THAT(fields, ElementsAre(5001, 12, 4095, 2));
}

TEST(OroBlockArray, IsMadeForALargestIndex) {
  tests::FakeHeap heap;
  heap.fillsBlocks = true;
  EXPECT_EQ(OroBlockArray(4095).Size(), 4096);
  EXPECT_EQ(OroBlockArray(4095).Get(4095), 0);
  EXPECT_EQ(OroBlockArray(4095).TableCapacity(), 1);
  EXPECT_EQ(OroBlockArray(4096).TableCapacity(), 2);
  EXPECT_EQ(OroBlockArray().Size(), 0);
  EXPECT_EQ(OroBlockArray(100, 0).Shift(), 12U) << "0 asks for the default";
  EXPECT_EQ(OroBlockArray(100, 3).Shift(), 3U);
  EXPECT_EQ(OroBlockArray(100, 3).TableCapacity(), 13);
}

TEST(OroBlockArray, ReadsAsZeroOutsideItsSize) {
  OroBlockArray array(9, 2);
  for (int32_t i = 0; i < 10; ++i) array.Set(i, i + 1);
  EXPECT_EQ(array.Get(9), 10);
  EXPECT_EQ(array.Get(10), 0);
  EXPECT_EQ(array.Get(INT32_MAX), 0);
  EXPECT_EQ(array.Get(-1), 0);
  array.ClearAll();
  EXPECT_EQ(array.Get(9), 0);
}

TEST(OroBlockArray, IsCopiedWithItsShape) {
  OroBlockArray array(9, 2);
  array.Set(9, 5);
  const OroBlockArray copy(array);
  array.Set(9, 6);
  EXPECT_EQ(copy.Get(9), 5);
  EXPECT_EQ(copy.Size(), 10);
  EXPECT_EQ(copy.Shift(), 2U);
}

void runRandomSteps(uint32_t arrayShift, int32_t largest, uint32_t seed) {
  std::mt19937 random(seed);
  OroBlockArray array(-1, arrayShift);
  std::vector<int32_t> model;
  for (int step = 0; step < 1000000; ++step) {
    const uint32_t choice = random() % 10000;
    if (choice < 20 || model.empty()) {
      const auto size = static_cast<int32_t>(random() % static_cast<uint32_t>(largest));
      array.Resize(size, choice % 3 == 0 ? -1 : choice % 3 == 1 ? 0 : size + 1, true);
      if (choice % 3 == 0) {
        ASSERT_EQ(array.Size(), size);
      } else {
        ASSERT_GE(array.Size(), size);
      }
      model.resize(static_cast<size_t>(array.Size()));
    } else if (choice < 6000) {
      const size_t i = random() % model.size();
      array.Set(static_cast<int32_t>(i), model[i] = step);
    } else {
      const size_t i = random() % (model.size() + 10);
      ASSERT_EQ(array.Get(static_cast<int32_t>(i)), i < model.size() ? model[i] : 0) << step;
    }
  }
  for (size_t i = 0; i < model.size(); ++i) ASSERT_EQ(array.Get(static_cast<int32_t>(i)), model[i]);
}

TEST(OroBlockArray, BehavesLikeAPlainVector) { runRandomSteps(0, 20000, 1); }

TEST(OroBlockArray, OfShortBlocksBehavesLikeAPlainVector) { runRandomSteps(3, 500, 2); }

}  // namespace
