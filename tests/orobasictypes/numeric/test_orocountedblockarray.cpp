#include "orobasictypes/orocountedblockarray.h"

#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/orobasictypes/memorymedia.h"

namespace {

using testing::ElementsAre;

std::string bytesOfNumbers(const std::vector<int32_t>& values) {
  tests::MemoryOutput output;
  output.Write(values.data(), static_cast<int64_t>(values.size()));
  output.FlushBuffer();
  return output.bytes;
}

std::string saved(const OroCountedBlockArray& array) {
  tests::MemoryOutput output;
  EXPECT_TRUE(array.Write(output));
  output.FlushBuffer();
  return output.bytes;
}

TEST(OroCountedBlockArray, HasItsCountBehindTheRest) {
  static_assert(sizeof(OroCountedBlockArray) == sizeof(OroBlockArray) + 8);
  OroCountedBlockArray array(3);
  EXPECT_EQ(array.Count(), 0) << "a size is not a count";
  array.Add(5);
  int32_t count = 0;
  std::memcpy(&count, reinterpret_cast<const char*>(&array) + sizeof(OroBlockArray), sizeof count);
  EXPECT_EQ(count, 1);
  array.SetCount(-5);
  EXPECT_EQ(array.Count(), 0);
}

TEST(OroCountedBlockArray, AppendsFromOne) {
  OroCountedBlockArray array;
  for (int32_t i = 1; i <= 10000; ++i) ASSERT_EQ(array.Add(i * 3), i);
  EXPECT_EQ(array.Count(), 10000);
  EXPECT_EQ(array.Get(0), 0);
  for (int32_t i = 1; i <= 10000; ++i) ASSERT_EQ(array.Get(i), i * 3);
}

TEST(OroCountedBlockArray, IsWrittenWithoutATag) {
  OroCountedBlockArray array;
  for (const int32_t value : {7, -2, 0x01020304}) array.Add(value);
  EXPECT_EQ(saved(array), std::string("\0\0\0\3"
                                      "\0\0\0\7"
                                      "\xFF\xFF\xFF\xFE"
                                      "\1\2\3\4",
                                      16));
  EXPECT_EQ(saved(OroCountedBlockArray()), std::string(4, '\0'));
}

TEST(OroCountedBlockArray, WritesZerosBeyondItsSize) {
  OroCountedBlockArray array(1);
  array.Set(0, 9);
  array.Set(1, 5);
  array.SetCount(3);
  EXPECT_EQ(saved(array), bytesOfNumbers({3, 5, 0, 0}));
  OroCountedBlockArray none;
  none.SetCount(2);
  EXPECT_EQ(saved(none), bytesOfNumbers({2, 0, 0}));
}

TEST(OroCountedBlockArray, IsReadWithTwoElementsToSpare) {
  tests::MemoryInput input(bytesOfNumbers({3, 7, -2, 9, 77}));
  OroCountedBlockArray array(100);
  array.Set(4, 5);
  array.SetCount(50);
  EXPECT_TRUE(array.Read(input));
  EXPECT_EQ(array.Count(), 3);
  EXPECT_EQ(array.Size(), 5);
  EXPECT_EQ(array.Get(0), 0);
  EXPECT_EQ(array.Get(1), 7);
  EXPECT_EQ(array.Get(3), 9);
  EXPECT_EQ(array.Get(4), 5) << "what is not read stays";
  EXPECT_EQ(input.Tell(), 16) << "and nothing behind it";
}

TEST(OroCountedBlockArray, ReadsWhatItWrote) {
  std::mt19937 random(1);
  for (const int32_t count : {0, 1, 4093, 4094, 4095, 4096, 4097, 8192, 100000}) {
    OroCountedBlockArray array;
    for (int32_t i = 0; i < count; ++i) array.Add(static_cast<int32_t>(random()));
    const std::string bytes = saved(array);
    tests::EndlessInput endless(bytes);
    tests::MemoryInput measured(bytes);
    for (tests::MemoryInput* input : {static_cast<tests::MemoryInput*>(&endless), &measured}) {
      OroCountedBlockArray copy;
      ASSERT_TRUE(copy.Read(*input));
      EXPECT_EQ(copy.Size(), count + 2);
      ASSERT_EQ(copy.Count(), count);
      for (int32_t i = 0; i <= count + 1; ++i) {
        ASSERT_EQ(copy.Get(i), i <= count ? array.Get(i) : 0) << i;
      }
    }
  }
}

TEST(OroCountedBlockArray, KeepsElementZeroWhenItIsRead) {
  OroCountedBlockArray written;
  for (int32_t i = 1; i <= 3; ++i) written.Add(i * 5);
  for (const int32_t largest : {0, 3, 9000}) {
    OroCountedBlockArray array(largest);
    array.Set(0, 77);
    tests::MemoryInput input(saved(written));
    ASSERT_TRUE(array.Read(input));
    EXPECT_EQ(array.Get(0), 77);
    EXPECT_EQ(array.Get(3), 15);
    EXPECT_EQ(array.Count(), 3);
    EXPECT_EQ(array.Size(), 5);
  }
}

TEST(OroCountedBlockArray, RefusesACountThatCannotBe) {
  for (const int32_t count : {-1, INT32_MIN, INT32_MAX, 4}) {
    tests::MemoryInput input(bytesOfNumbers({count, 1, 2, 3}));
    OroCountedBlockArray array;
    array.Add(5);
    EXPECT_FALSE(array.Read(input)) << count;
    EXPECT_EQ(array.Count(), 1);
    EXPECT_EQ(array.Get(1), 5);
  }
  tests::MemoryInput empty("\0\0");
  OroCountedBlockArray array;
  EXPECT_FALSE(array.Read(empty));
}

TEST(OroCountedBlockArray, TakesNoPromiseOfAnEndlessInput) {
  tests::EndlessInput input(bytesOfNumbers({INT32_MAX - 2, 1, 2, 3}));
  OroCountedBlockArray array;
  EXPECT_FALSE(array.Read(input));
  EXPECT_EQ(array.Count(), 0);
  EXPECT_LE(array.Size(), 4096) << "one block";
}

TEST(OroCountedBlockArray, TellsABadMedium) {
  tests::MemoryInput input(bytesOfNumbers({1, 5}));
  input.good = false;
  OroCountedBlockArray array;
  EXPECT_FALSE(array.Read(input));
  tests::MemoryOutput output;
  output.takes = false;
  EXPECT_FALSE(array.Write(output));
}

}  // namespace
