#include "orobasictypes/bitvector.h"

#include <bit>
#include <cstring>
#include <functional>
#include <numeric>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/binmagic.h"
#include "orobasictypes/bitvectoriter.h"
#include "orobasictypes/blockbitvector.h"
#include "orobasictypes/orointlist.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/orobasictypes/numeric/listof.h"
#include "tests/support/assertionlist.h"
#include "tests/support/countingmanager.h"
#include "tests/support/fakeheap.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using tests::bitsOf;
using tests::setBits;

constexpr int32_t largeMaximum = 131071;  // 4096 words

class Bits : public testing::Test {
 protected:
  std::vector<std::string> log() { return memory_.manager->takeLog(); }

  tests::ManagedMemory memory_;
};

std::vector<int32_t> counted(int32_t first, int32_t last) {
  std::vector<int32_t> values(static_cast<size_t>(last - first + 1));
  std::iota(values.begin(), values.end(), first);
  return values;
}

TEST_F(Bits, HaveTheirFieldsInOrder) {
  static_assert(sizeof(BitVector) == sizeof(OroShared) + 32);
  BitVector bits(40);
  bits.Set(5);
  const char* const fields = reinterpret_cast<const char*>(&bits) + sizeof(OroShared);
  const uint32_t* words = nullptr;
  const void* large = nullptr;
  const BinMagic* tag = nullptr;
  int32_t numbers[2] = {};
  std::memcpy(&words, fields, 8);
  std::memcpy(&large, fields + 8, 8);
  std::memcpy(&tag, fields + 16, 8);
  std::memcpy(numbers, fields + 24, 8);
  EXPECT_EQ(words[0], 32U);
  EXPECT_EQ(large, nullptr);
  EXPECT_EQ(tag->GetValue(), 828282838);
  EXPECT_THAT(numbers, ElementsAre(63, 1));
}

TEST_F(Bits, HaveWholeWords) {
  EXPECT_EQ(BitVector(0).MaximumBit(), 31);
  EXPECT_EQ(BitVector(31).MaximumBit(), 31);
  EXPECT_EQ(BitVector(32).MaximumBit(), 63);
  EXPECT_EQ(BitVector(-100).MaximumBit(), 31);
  EXPECT_EQ(BitVector(0).KnownCount(), 0);
}

TEST_F(Bits, AreLargeFromFourThousandAndNinetySixWords) {
  const BitVector small(largeMaximum - 32);
  EXPECT_FALSE(small.IsLarge());
  EXPECT_EQ(small.MaximumBit(), largeMaximum - 32);
  const BitVector large(largeMaximum);
  EXPECT_TRUE(large.IsLarge());
  EXPECT_EQ(large.MaximumBit(), largeMaximum);
  const BitVector odd(largeMaximum + 1);
  EXPECT_EQ(odd.MaximumBit(), 131103) << "made, a vector does not end on a block";
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(Bits, OfTheWholeRangeOfIndicesNeedOnlyTheBlocksInUse) {
  BitVector bits(INT32_MAX);
  EXPECT_EQ(bits.MaximumBit(), INT32_MAX);
  bits.Set(INT32_MAX);
  bits.Set(5);
  EXPECT_TRUE(bits.Test(INT32_MAX));
  EXPECT_EQ(bits.NextSet(5), INT32_MAX);
  EXPECT_EQ(bits.NextSet(INT32_MAX), -1);
  EXPECT_EQ(bits.PrevSet(INT32_MAX), 5);
  EXPECT_EQ(bits.NextClear(INT32_MAX - 1), -1);
  EXPECT_EQ(bits.CountAfter(5), 1);
  EXPECT_EQ(bits.CountBelow(INT32_MAX), 1);
  EXPECT_EQ(memory_.manager->allocations, 2);
}

TEST_F(Bits, AreSetClearedAndTested) {
  for (const int32_t maximum : {100, 200000}) {
    BitVector bits(maximum);
    for (const int32_t b : {0, 1, 31, 32, 99}) {
      EXPECT_FALSE(bits.Test(b));
      bits.Set(b);
      bits.Set(b);
      EXPECT_TRUE(bits.Test(b));
    }
    EXPECT_EQ(bits.KnownCount(), 5) << "a bit counts once";
    bits.Clear(31);
    bits.Clear(31);
    bits.Clear(50);
    EXPECT_FALSE(bits.Test(31));
    EXPECT_EQ(bits.KnownCount(), 4);
  }
}

TEST_F(Bits, KeepAnUnknownCountUnknown) {
  BitVector bits(100);
  bits.Not();
  EXPECT_EQ(bits.KnownCount(), -1);
  bits.Clear(3);
  bits.Set(3);
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.CountSet(), 128);
  EXPECT_EQ(bits.KnownCount(), 128);
}

TEST_F(Bits, BelowZeroDoNotExist) {
  BitVector bits(100);
  for (const int32_t b : {-1, -32, INT32_MIN}) {
    bits.Set(b);
    bits.Clear(b);
    EXPECT_FALSE(bits.Test(b));
  }
  EXPECT_EQ(bits.MaximumBit(), 127);
  EXPECT_EQ(bits.KnownCount(), 0);
}

TEST_F(Bits, AboveTheMaximumGrowOnlyWhenSet) {
  BitVector bits(0);
  EXPECT_FALSE(bits.Test(32));
  bits.Clear(32);
  EXPECT_EQ(bits.MaximumBit(), 31);
  bits.Set(32);
  EXPECT_EQ(bits.MaximumBit(), 63);
  EXPECT_THAT(setBits(bits), ElementsAre(32));
}

TEST_F(Bits, ClearAnAbsentBlockWithoutMakingIt) {
  BitVector bits(largeMaximum);
  bits.Clear(70000);
  EXPECT_THAT(log(), IsEmpty());
  bits.Set(70000);
  EXPECT_THAT(log(), ElementsAre("alloc 1 8192 zero"));
}

// ---------------------------------------------------------------------------------------------

TEST_F(Bits, DoubleTheMaximumBitWhenTheyGrow) {
  struct Row {
    int32_t present;
    int32_t wanted;
    int32_t maximum;
  };
  for (const Row& row :
       {Row{31, 32, 63}, Row{31, 61, 63}, Row{31, 62, 127}, Row{31, 63, 127}, Row{31, 40, 63},
        Row{63, 64, 127}, Row{63, 126, 255}, Row{95, 96, 191}, Row{63, 1000, 1023}}) {
    BitVector bits(row.present);
    bits.Resize(row.wanted);
    EXPECT_EQ(bits.MaximumBit(), row.maximum) << row.present << " to " << row.wanted;
  }
}

TEST_F(Bits, ShrinkToTheWordsAskedFor) {
  BitVector bits(64 * 32 - 1);
  bits.Set(5);
  bits.Resize(31);
  EXPECT_EQ(bits.MaximumBit(), 31);
  EXPECT_EQ(bits.KnownCount(), -1) << "although nothing was lost";
  EXPECT_EQ(bits.CountSet(), 1);
  bits.Resize(-7);
  EXPECT_EQ(bits.MaximumBit(), 31) << "never below one word";
  EXPECT_EQ(bits.KnownCount(), 1);
}

TEST_F(Bits, ResizedWithinTheirWordsKnowTheirCount) {
  BitVector bits(100);
  bits.Set(120);
  bits.Resize(97);
  EXPECT_EQ(bits.MaximumBit(), 127);
  EXPECT_EQ(bits.KnownCount(), 1);
  EXPECT_TRUE(bits.Test(120)) << "a shrink drops whole words";
}

TEST_F(Bits, AddedByGrowthAreClear) {
  BitVector bits(31);
  bits.Not();
  bits.Resize(5000);
  EXPECT_EQ(bits.CountSet(), 32);
  bits.Resize(40);
  bits.Resize(6000);
  EXPECT_EQ(bits.CountSet(), 32);
}

TEST_F(Bits, GrowInOnePieceToSixThousandWordsAtMost) {
  BitVector bits(4000 * 32 - 1);
  bits.Resize(4090 * 32);
  EXPECT_FALSE(bits.IsLarge());
  EXPECT_EQ(bits.MaximumBit(), 6144 * 32 - 1);
}

TEST_F(Bits, MoveToBlocksAboveFourThousandAndNinetySixWords) {
  BitVector bits(100);
  bits.Set(7);
  bits.Resize(largeMaximum);
  EXPECT_FALSE(bits.IsLarge()) << "4096 words are needed";
  BitVector more(100);
  more.Set(7);
  more.Resize(largeMaximum + 1);
  EXPECT_TRUE(more.IsLarge());
  EXPECT_EQ((more.MaximumBit() + 1) % 65536, 0) << "they end on a block";
  EXPECT_THAT(setBits(more), ElementsAre(7));
  EXPECT_EQ(more.KnownCount(), 1);
  EXPECT_THAT(log(), ElementsAre("alloc 1 8192 zero")) << "for what is not zero";
}

TEST_F(Bits, MoveBackBelowFifteenHundredAndThirtySixWords) {
  BitVector bits(largeMaximum);
  bits.Set(40000);
  bits.Resize(1536 * 32 - 1);
  EXPECT_TRUE(bits.IsLarge());
  EXPECT_EQ(bits.MaximumBit(), 65535);
  bits.Resize(1535 * 32 - 1);
  EXPECT_FALSE(bits.IsLarge());
  EXPECT_EQ(bits.MaximumBit(), 1535 * 32 - 1);
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_THAT(setBits(bits), ElementsAre(40000));
  EXPECT_EQ(memory_.manager->living(), 0);
}

TEST_F(Bits, InBlocksGrowToTheEndOfABlock) {
  BitVector bits(largeMaximum + 1);  // 4097 words in an array of 6144
  bits.Resize(131200);
  EXPECT_EQ(bits.MaximumBit(), 10240 * 32 - 1);
  bits.Resize(5000 * 32);
  EXPECT_EQ(bits.MaximumBit(), 6144 * 32 - 1);
}

TEST_F(Bits, DoNotShowWhatStoodBehindThem) {
  BitVector bits(largeMaximum + 1);
  bits.Not();
  bits.Resize(140000);
  EXPECT_EQ(bits.CountSet(), 131104) << "the words behind the maximum bit stayed zero";
}

TEST_F(Bits, StopDoublingAtTheLargestIndex) {
  BitVector bits(0x40000000);
  bits.Resize(0x7FFFFF00);
  EXPECT_EQ(bits.MaximumBit(), INT32_MAX);
  BitVector other(200000);
  other.Resize(INT32_MAX);
  EXPECT_EQ(other.MaximumBit(), INT32_MAX);
}

TEST(BitsWithoutManager, StayInOnePiece) {
  const tests::UnmanagedMemory memory;
  BitVector bits(largeMaximum);
  EXPECT_FALSE(bits.IsLarge());
  EXPECT_EQ(bits.MaximumBit(), largeMaximum);
  bits.Set(100000);
  bits.Resize(250000);
  EXPECT_FALSE(bits.IsLarge());
  EXPECT_EQ(bits.MaximumBit(), 262142 / 32 * 32 + 31);
  EXPECT_THAT(setBits(bits), ElementsAre(100000));
}

TEST(BitsWithoutManager, OfTheWholeRangeAreOneMoreThanACountCanTell) {
  const tests::UnmanagedMemory memory;
  BitVector bits(INT32_MAX);
  bits.SetCapacity();
  EXPECT_EQ(bits.KnownCount(), INT32_MAX);
  bits.Set(0);
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.CountSet(), INT32_MAX);
  EXPECT_EQ(bits.KnownCount(), -1);
  BlockBitVector blocks;
  blocks |= bits;
  EXPECT_EQ(blocks.CountSet(), INT32_MAX);
  EXPECT_EQ(blocks.KnownCount(), -1);
  for (int32_t block = 1; block <= blocks.LastBlock(); block += 1000) {
    EXPECT_EQ(blocks.BlockCount(block), BlockBitVector::kBlockBits);
  }

  bits.Clear(7);
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.CountSet(), INT32_MAX);
  EXPECT_EQ(bits.KnownCount(), INT32_MAX);
  EXPECT_TRUE(bits.Insert(7));
  EXPECT_EQ(bits.KnownCount(), -1);
  const BlockBitVector before = blocks;
  EXPECT_TRUE(blocks.Clear(7));
  EXPECT_EQ(blocks.CountSet(), INT32_MAX);
  EXPECT_EQ(blocks.KnownCount(), INT32_MAX);
  EXPECT_FALSE(blocks == before);
  EXPECT_FALSE(before == blocks);
  EXPECT_TRUE(blocks.Set(7));
  EXPECT_EQ(blocks.KnownCount(), -1);
}

TEST(BitsWithoutManager, ShrinkToMoreThanTheUsualCap) {
  const tests::UnmanagedMemory memory;
  tests::AssertionList assertions;
  BitVector bits(9376 * 32 - 1);
  bits.Set(7000 * 32);
  bits.Resize(7813 * 32 - 1);
  EXPECT_EQ(bits.MaximumBit(), 7813 * 32 - 1);
  EXPECT_TRUE(bits.Test(7000 * 32));
  EXPECT_THAT(assertions.take(), IsEmpty());
}

TEST(BitsWithoutManager, MoveToBlocksWhenAManagerHasCome) {
  const tests::UnmanagedMemory none;
  std::optional<BitVector> bits(5000 * 32);
  bits->Set(160000);
  const tests::ManagedMemory memory;
  bits->Resize(300000);
  EXPECT_TRUE(bits->IsLarge());
  EXPECT_THAT(setBits(*bits), ElementsAre(160000));
  bits.reset();
}

// ---------------------------------------------------------------------------------------------

TEST_F(Bits, AreCopiedInTheirKindOfStorage) {
  for (const int32_t maximum : {100, 200000}) {
    BitVector bits(maximum);
    bits.Set(77);
    const BitVector copy(bits);
    EXPECT_EQ(copy.MaximumBit(), bits.MaximumBit());
    EXPECT_EQ(copy.IsLarge(), bits.IsLarge());
    EXPECT_EQ(copy.KnownCount(), 1);
    EXPECT_THAT(setBits(copy), ElementsAre(77));
  }
  BitVector shrunk(largeMaximum);
  shrunk.Resize(1536 * 32 - 1);
  EXPECT_TRUE(BitVector(shrunk).IsLarge()) << "whatever its size";
}

TEST_F(Bits, AssignedIntoALargerBufferKeepIt) {
  BitVector target = bitsOf({1, 300, 900}, 1000);
  const BitVector source = bitsOf({5, 40}, 63);
  target = source;
  EXPECT_EQ(target.MaximumBit(), 1023);
  EXPECT_THAT(setBits(target), ElementsAre(5, 40));
  EXPECT_EQ(target.KnownCount(), 2);
}

TEST_F(Bits, AssignedIntoASmallerBufferReplaceIt) {
  BitVector target = bitsOf({1});
  target = bitsOf({5, 900}, 1000);
  EXPECT_EQ(target.MaximumBit(), 1023);
  EXPECT_THAT(setBits(target), ElementsAre(5, 900));
}

TEST_F(Bits, AssignedTakeTheStorageOfTheSource) {
  BitVector target = bitsOf({1, 150000}, 200000);
  target = bitsOf({3}, 100);
  EXPECT_FALSE(target.IsLarge());
  EXPECT_EQ(target.MaximumBit(), 127);
  EXPECT_THAT(setBits(target), ElementsAre(3));
  EXPECT_EQ(memory_.manager->living(), 0);
  const BitVector large = bitsOf({9, 180000}, 200000);
  target = large;
  EXPECT_TRUE(target.IsLarge());
  EXPECT_EQ(target.MaximumBit(), large.MaximumBit());
  EXPECT_THAT(setBits(target), ElementsAre(9, 180000));
  BitVector other = bitsOf({70000}, 400000);
  other = large;
  EXPECT_EQ(other.MaximumBit(), large.MaximumBit());
  EXPECT_THAT(setBits(other), ElementsAre(9, 180000));
}

TEST_F(Bits, AssignedToThemselvesStay) {
  BitVector bits = bitsOf({1, 2, 3}, 100);
  const BitVector& same = bits;
  bits = same;
  EXPECT_THAT(setBits(bits), ElementsAre(1, 2, 3));
}

TEST_F(Bits, MovedLeaveNothingBehind) {
  for (const int32_t maximum : {100, 200000}) {
    tests::AssertionList assertions;
    BitVector source = bitsOf({4, 90}, maximum);
    const int32_t present = source.MaximumBit();
    BitVector target(std::move(source));
    EXPECT_EQ(target.MaximumBit(), present);
    EXPECT_THAT(setBits(target), ElementsAre(4, 90));
    EXPECT_EQ(source.MaximumBit(), -1);  // NOLINT: it has a state
    EXPECT_EQ(source.CountSet(), 0);
    EXPECT_FALSE(source.Test(0));
    EXPECT_EQ(source.NextSet(-1), -1);
    EXPECT_EQ(source.NextClear(-1), -1);
    EXPECT_EQ(source.PrevSet(5), -1);
    EXPECT_EQ(source.PrevClear(5), -1);
    EXPECT_THAT(assertions.take(), IsEmpty());
    source.Set(40);
    EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/bitvector"));
    EXPECT_EQ(source.MaximumBit(), 63);
    EXPECT_THAT(setBits(source), ElementsAre(40));
  }
}

TEST_F(Bits, MovedFromTakePartInEverything) {
  BitVector source(100);
  BitVector target(std::move(source));
  BitVector& none = source;  // NOLINT: it has a state
  none.Clear(1);
  none.Not();
  none.SetCapacity();
  none.Zero();
  EXPECT_FALSE(none.SetRange(0, 5));
  EXPECT_FALSE(none.ClearRange(0, 5));
  none &= target;
  none -= target;
  none.Compact(target);
  none.RemoveMasked(target);
  none.KeepEvenly(0);
  none.KeepRandom(0.5, nullptr);
  target |= none;
  target ^= none;
  EXPECT_TRUE(none == target);
  EXPECT_TRUE(none.Disjoint(target));
  target.SetAll(100);
  target &= none;
  EXPECT_EQ(target.CountSet(), 0);
  const BitVector copy(none);
  EXPECT_EQ(copy.MaximumBit(), -1);
  target.SetAll(50);
  target = none;
  EXPECT_EQ(target.CountSet(), 0);
  EXPECT_EQ(target.MaximumBit(), 63) << "the buffer stays";
  none = bitsOf({7});
  EXPECT_THAT(setBits(none), ElementsAre(7));
}

TEST_F(Bits, AreSwapped) {
  BitVector small = bitsOf({3}, 100);
  BitVector large = bitsOf({150000}, 200000);
  large.Not();
  small.Swap(large);
  EXPECT_TRUE(small.IsLarge());
  EXPECT_EQ(small.KnownCount(), -1);
  EXPECT_EQ(large.MaximumBit(), 127);
  EXPECT_THAT(setBits(large), ElementsAre(3));
}

TEST_F(Bits, ShareOneEmptyVector) {
  EXPECT_EQ(&BitVector::Empty(), &BitVector::Empty());
  EXPECT_EQ(BitVector::Empty().MaximumBit(), 31);
  EXPECT_EQ(BitVector::Empty().CountSet(), 0);
}

TEST_F(Bits, AreMadeWithTwoSmallAllocations) {
  tests::FakeHeap heap;
  const BitVector bits(1000);
  EXPECT_THAT(heap.sizes, ElementsAre(128)) << "beside the tag";
}

// ---------------------------------------------------------------------------------------------

TEST_F(Bits, AreWalkedForwards) {
  BitVector bits = bitsOf({5, 31, 32, 100}, 127);
  EXPECT_EQ(bits.NextSet(-1), 5);
  EXPECT_EQ(bits.NextSet(-100), 5);
  EXPECT_EQ(bits.NextSet(5), 31);
  EXPECT_EQ(bits.NextSet(31), 32);
  EXPECT_EQ(bits.NextSet(99), 100);
  EXPECT_EQ(bits.NextSet(100), -1);
  EXPECT_EQ(bits.NextSet(127), -1);
  EXPECT_EQ(bits.NextSet(5000), -1);
  EXPECT_EQ(bits.NextSet(INT32_MAX), -1);
  EXPECT_EQ(BitVector(0).NextSet(-1), -1);
  EXPECT_EQ(bitsOf({0}).NextSet(-1), 0) << "bit 0 is looked at first";
}

TEST_F(Bits, AreWalkedBackwards) {
  BitVector bits = bitsOf({0, 5, 31, 32, 127}, 127);
  EXPECT_EQ(bits.PrevSet(128), 127) << "from above the maximum bit, that one is looked at first";
  EXPECT_EQ(bits.PrevSet(INT32_MAX), 127);
  EXPECT_EQ(bits.PrevSet(127), 32) << "strictly before";
  EXPECT_EQ(bits.PrevSet(32), 31);
  EXPECT_EQ(bits.PrevSet(31), 5);
  EXPECT_EQ(bits.PrevSet(1), 0);
  EXPECT_EQ(bits.PrevSet(0), -1);
  EXPECT_EQ(bits.PrevSet(-1), -1);
  EXPECT_EQ(BitVector(100).PrevSet(100), -1);
}

TEST_F(Bits, ThatAreClearAreWalked) {
  BitVector bits(63);
  bits.Not();
  for (const int32_t b : {0, 7, 40}) bits.Clear(b);
  EXPECT_EQ(bits.NextClear(-1), 0);
  EXPECT_EQ(bits.NextClear(0), 7);
  EXPECT_EQ(bits.NextClear(7), 40);
  EXPECT_EQ(bits.NextClear(40), -1) << "and not the maximum bit plus one";
  EXPECT_EQ(bits.NextClear(64), -1);
  EXPECT_EQ(bits.PrevClear(1000), 40);
  EXPECT_EQ(bits.PrevClear(40), 7);
  EXPECT_EQ(bits.PrevClear(1), 0);
  EXPECT_EQ(bits.PrevClear(0), -1);
}

TEST_F(Bits, AreWalkedAcrossAbsentBlocks) {
  BitVector bits(1000000);
  bits.Set(10);
  bits.Set(500000);
  EXPECT_EQ(bits.NextSet(10), 500000);
  EXPECT_EQ(bits.PrevSet(500000), 10);
  EXPECT_EQ(bits.NextClear(70000), 70001);
  EXPECT_EQ(bits.PrevClear(70000), 69999);
  bits.Zero();
  bits.SetRange(0, 65535);
  EXPECT_EQ(bits.NextClear(-1), 65536) << "the first absent block";
  bits.SetRange(131072, 199999);
  EXPECT_EQ(bits.PrevClear(190000), 131071);
}

// One bit that is unlike all others is found from any distance, in vectors of few words, across the
// end of a block and in a last block that the vector does not fill.
TEST_F(Bits, AreFoundFromAnyDistance) {
  const std::vector<int32_t> sizes = {1, 2, 3, 4, 5, 8, 9, 10, 11, 17, 25, 193, 194, 202, 300};
  for (const int32_t words : sizes) {
    for (int32_t word = 0; word < words; ++word) {
      BitVector bits(words * 32 - 1);
      const int32_t b = word * 32 + word % 32;
      bits.Set(b);
      for (int32_t from = -1; from < b; from += 31) ASSERT_EQ(bits.NextSet(from), b) << words;
      ASSERT_EQ(bits.NextSet(b), -1) << words;
      bits.Not();
      for (int32_t from = -1; from < b; from += 31) ASSERT_EQ(bits.NextClear(from), b) << words;
      ASSERT_EQ(bits.NextClear(b), -1) << words;
    }
  }
}

TEST_F(Bits, AreFoundAcrossBlocks) {
  constexpr int32_t maximum = 131072 + 40 * 32 - 1;  // a third block of which 40 words are used
  for (const int32_t b : {65535, 65536, 65567, 65600, 72000, 131071, 131072, 131200, maximum}) {
    BitVector bits(maximum);
    ASSERT_TRUE(bits.IsLarge());
    ASSERT_EQ(bits.MaximumBit(), maximum);
    bits.Not();  // so that there are all blocks
    EXPECT_EQ(bits.NextClear(b), -1) << "what lies behind the maximum bit is not found";
    EXPECT_EQ(bits.NextClear(maximum), -1);
    bits.Clear(b);
    for (const int32_t before : {1, 31, 32, 33, 300, 6100, 6200, 6500, 50000}) {
      ASSERT_EQ(bits.NextClear(b - before), b) << before;
    }
    bits.Not();
    for (const int32_t before : {1, 31, 32, 33, 300, 6100, 6200, 6500, 50000}) {
      ASSERT_EQ(bits.NextSet(b - before), b) << before;
    }
    EXPECT_EQ(bits.NextSet(b), -1);
  }
}

// Whatever their number, in either storage, and beside bits that are set already.
TEST_F(Bits, AreCountedAsTheyAreSet) {
  for (const int32_t maximum : {1023, 200000}) {
    BitVector bits(maximum);
    std::set<int32_t> expected;
    std::mt19937 random(7);
    for (int step = 0; step < 5000; ++step) {
      const auto b = static_cast<int32_t>(random() % static_cast<uint32_t>(maximum + 1));
      bits.Set(b);
      expected.insert(b);
      ASSERT_EQ(bits.KnownCount(), static_cast<int32_t>(expected.size()));
    }
    EXPECT_EQ(bits.Recount(), static_cast<int32_t>(expected.size()));
    bits ^= BitVector(bits);
    ASSERT_EQ(bits.KnownCount(), -1);
    bits.Set(31);
    bits.Set(32);
    EXPECT_EQ(bits.KnownCount(), -1) << "what is not known stays so";
    EXPECT_EQ(bits.CountSet(), 2);
  }
}

TEST_F(Bits, AreVisited) {
  for (const int32_t maximum : {0, 1999, 2047, 2048, 100000, 400000}) {
    BitVector bits(maximum);
    std::mt19937 random(static_cast<uint32_t>(maximum));
    for (int32_t b = 0; b <= bits.MaximumBit(); b += 1 + static_cast<int32_t>(random() % 100)) {
      bits.Set(b);
    }
    bits.SetRange(300, 700);
    bits.Set(bits.MaximumBit());
    const std::vector<int32_t> expected = setBits(bits);
    std::vector<int32_t> visited;
    bits.ForEachSet([&](int32_t b) { visited.push_back(b); });
    EXPECT_EQ(visited, expected);
    std::vector<int32_t> inPairs;
    bits.ForEachPair([&](uint64_t pair, int32_t first) {
      EXPECT_EQ(first % 64, 0);
      EXPECT_NE(pair, 0U);
      for (; pair != 0; pair &= pair - 1) inPairs.push_back(first + std::countr_zero(pair));
    });
    EXPECT_EQ(inPairs, expected);
    std::vector<int32_t> walked;
    for (BitVectorIter i(bits); !i.AtEnd(); i.Next()) walked.push_back(i.Bit());
    EXPECT_EQ(walked, expected);
    EXPECT_THAT(tests::listOf(OroIntList(bits)), ElementsAreArray(expected));
    bits.ForEachSet([&](int32_t b) { bits.Clear(b); });
    EXPECT_EQ(bits.CountSet(), 0) << "they may be cleared on the way";
    EXPECT_TRUE(BitVectorIter(bits).AtEnd());
  }
}

TEST_F(Bits, MakeAListWithTenPlaces) {
  EXPECT_EQ(OroIntList(bitsOf({1, 2, 3})).Capacity(), 11);
  EXPECT_EQ(OroIntList(bitsOf({})).Capacity(), 11);
}

TEST_F(Bits, AreCounted) {
  BitVector bits(100);
  bits.Not();
  EXPECT_EQ(bits.Recount(), 128);
  EXPECT_EQ(bits.KnownCount(), 128);
  BitVector large(300000);
  large.SetRange(0, 299999);
  EXPECT_EQ(large.CountSet(), 300000);
  EXPECT_EQ(BitVector(0).CountSet(), 0);
}

TEST_F(Bits, AreCountedBehindAndBelow) {
  for (const int32_t maximum : {127, 300000}) {
    BitVector bits = bitsOf({3, 31, 32, 64, 127}, maximum);
    EXPECT_EQ(bits.CountAfter(-1), 5);
    EXPECT_EQ(bits.CountAfter(INT32_MIN), 5);
    EXPECT_EQ(bits.CountAfter(3), 4) << "strictly behind";
    EXPECT_EQ(bits.CountAfter(30), 4);
    EXPECT_EQ(bits.CountAfter(31), 3);
    EXPECT_EQ(bits.CountAfter(127), 0);
    EXPECT_EQ(bits.CountAfter(INT32_MAX), 0);
    EXPECT_EQ(bits.CountBelow(3), 0);
    EXPECT_EQ(bits.CountBelow(4), 1);
    EXPECT_EQ(bits.CountBelow(32), 2);
    EXPECT_EQ(bits.CountBelow(33), 3);
    EXPECT_EQ(bits.CountBelow(127), 4);
    EXPECT_EQ(bits.CountBelow(INT32_MAX), 5);
    EXPECT_EQ(bits.CountBelow(-5), 0);
    bits.Set(0);
    EXPECT_EQ(bits.CountBelow(100), 0) << "with bit 0 nothing is counted";
    EXPECT_EQ(BitVector(maximum).CountBelow(100), 0);
  }
}

TEST_F(Bits, AreCutIntoRuns) {
  BitVector bits(300000);
  for (int32_t b = 7; b <= 700; b += 7) bits.Set(b);  // 100 bits
  bits.Not();
  bits.Not();
  int32_t first[5];
  int32_t start[5];
  bits.Partition(4, first, start);
  EXPECT_THAT(start, ElementsAre(0, 25, 50, 75, 100));
  EXPECT_THAT(first, ElementsAre(7, 182, 357, 532, -1));
  EXPECT_EQ(bits.KnownCount(), 100);
  bits.Partition(1, first, start);
  EXPECT_EQ(first[0], 7);
  EXPECT_EQ(first[1], -1);
  EXPECT_EQ(start[1], 100);
}

TEST_F(Bits, AreCutByAFormulaOfDoubles) {
  BitVector bits(100);
  bits.SetAll(49);
  std::vector<int32_t> first(50);
  std::vector<int32_t> start(50);
  bits.Partition(49, first.data(), start.data());
  EXPECT_EQ(start[1], 0) << "1.0 / 49 * 49 is below 1";
  EXPECT_EQ(first[1], 1);
  bits.SetAll(90);
  bits.Partition(10, first.data(), start.data());
  EXPECT_EQ(start[7], 62);
  EXPECT_EQ(first[7], 63);
}

TEST_F(Bits, AreCutIntoEmptyRunsToo) {
  BitVector bits = bitsOf({5, 9});
  std::vector<int32_t> first(6, 99);
  std::vector<int32_t> start(6, 99);
  bits.Partition(5, first.data(), start.data());
  EXPECT_THAT(start, ElementsAre(0, 0, 0, 1, 1, 2));
  EXPECT_THAT(first, ElementsAre(5, 5, 5, 9, 9, -1));
  BitVector(40).Partition(5, first.data(), start.data());
  EXPECT_THAT(start, Each(0));
  EXPECT_THAT(first, Each(-1));
  first.assign(6, 99);
  bits.Partition(0, first.data(), first.data());
  bits.Partition(-3, first.data(), first.data());
  EXPECT_THAT(first, Each(99));
}

// ---------------------------------------------------------------------------------------------

TEST_F(Bits, AreEqualWhateverRoomTheyHave) {
  EXPECT_TRUE(bitsOf({3, 90}, 100) == bitsOf({3, 90}, 300000));
  EXPECT_TRUE(bitsOf({3, 90}, 300000) == bitsOf({3, 90}, 100));
  EXPECT_FALSE(bitsOf({3, 90}, 100) == bitsOf({3, 91}, 100));
  EXPECT_FALSE(bitsOf({3, 90}, 100) == bitsOf({3, 200000}, 300000));
  BitVector zero(300000);
  zero.Set(200000);
  zero.Clear(200000);
  EXPECT_TRUE(zero == BitVector(300000)) << "a block of zeros is no block";
  EXPECT_TRUE(BitVector(300000) == zero);
}

TEST_F(Bits, OfDifferentKnownCountsAreDifferent) {
  BitVector a = bitsOf({1, 2});
  BitVector b = bitsOf({1});
  EXPECT_FALSE(a == b);
  a.ClearRange(2, 2);  // the count is unknown
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(a == a);
}

TEST_F(Bits, AreDisjoint) {
  for (const int32_t maximum : {100, 300000}) {
    EXPECT_TRUE(bitsOf({1, 3, 5}, maximum).Disjoint(bitsOf({0, 2, 4, 90})));
    EXPECT_FALSE(bitsOf({1, 3, 99}, maximum).Disjoint(bitsOf({99})));
    EXPECT_TRUE(BitVector(maximum).Disjoint(BitVector(0)));
  }
}

TEST_F(Bits, AreIntersected) {
  BitVector bits = bitsOf({1, 40, 90, 200}, 255);
  bits &= bitsOf({40, 90, 91}, 100);
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.MaximumBit(), 255);
  EXPECT_THAT(setBits(bits), ElementsAre(40, 90)) << "beyond the other all are cleared";
  BitVector none(100);
  none &= bits;
  EXPECT_EQ(none.KnownCount(), 0) << "nothing to do";
  bits &= none;
  EXPECT_EQ(bits.KnownCount(), 0);
  bits.Not();
  bits.Not();
  BitVector unknown = bits;
  EXPECT_EQ(unknown.KnownCount(), -1);
  unknown &= bitsOf({1});
  EXPECT_EQ(unknown.KnownCount(), -1) << "only a known count takes the short way";
}

TEST_F(Bits, AreUnitedAndGrowToTheLastWordInUse) {
  BitVector bits = bitsOf({1});
  bits |= bitsOf({40}, 5000);
  EXPECT_THAT(setBits(bits), ElementsAre(1, 40));
  EXPECT_EQ(bits.MaximumBit(), 127) << "asked for the end of word 1, 62 doubles once more";
  EXPECT_EQ(bits.KnownCount(), -1);
  BitVector same = bitsOf({1});
  same |= BitVector(5000);
  EXPECT_EQ(same.MaximumBit(), 31);
  EXPECT_EQ(same.KnownCount(), 1) << "an empty other does nothing";
  BitVector wide(1000);
  wide |= bitsOf({5});
  EXPECT_EQ(wide.MaximumBit(), 1023) << "nothing shrinks";
}

TEST_F(Bits, AreExclusivelyUnited) {
  BitVector bits = bitsOf({1, 40}, 63);
  bits ^= bitsOf({40, 100}, 5000);
  EXPECT_THAT(setBits(bits), ElementsAre(1, 100));
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.MaximumBit(), 255);
  const BitVector& self = bits;
  bits ^= self;
  EXPECT_EQ(bits.CountSet(), 0);
}

TEST_F(Bits, AreSubtracted) {
  BitVector bits = bitsOf({1, 40, 100}, 127);
  bits -= bitsOf({40}, 63);
  EXPECT_THAT(setBits(bits), ElementsAre(1, 100));
  BitVector known = bitsOf({7});
  known -= BitVector(100);
  EXPECT_EQ(known.KnownCount(), 1);
  BitVector none(100);
  none -= bits;
  EXPECT_EQ(none.KnownCount(), 0);
}

TEST_F(Bits, OfFewWordsAreMergedLikeSingleBits) {
  std::mt19937 random(5);
  for (int32_t words = 1; words <= 70; ++words) {
    const int32_t maximum = words * 32 - 1;
    BitVector a(maximum);
    BitVector b(maximum);
    for (int32_t i = 0; i < words * 16; ++i) {
      a.Set(static_cast<int32_t>(random() % (static_cast<uint32_t>(maximum) + 1)));
      b.Set(static_cast<int32_t>(random() % (static_cast<uint32_t>(maximum) + 1)));
    }
    BitVector both(a);
    BitVector either(a);
    BitVector one(a);
    BitVector rest(a);
    BitVector flipped(a);
    both &= b;
    either |= b;
    one ^= b;
    rest -= b;
    const int32_t n = maximum - static_cast<int32_t>(random() % 32);
    flipped.Complement(n);
    for (int32_t i = 0; i <= maximum; ++i) {
      ASSERT_EQ(both.Test(i), a.Test(i) && b.Test(i)) << words << " words, bit " << i;
      ASSERT_EQ(either.Test(i), a.Test(i) || b.Test(i)) << words << " words, bit " << i;
      ASSERT_EQ(one.Test(i), a.Test(i) != b.Test(i)) << words << " words, bit " << i;
      ASSERT_EQ(rest.Test(i), a.Test(i) && !b.Test(i)) << words << " words, bit " << i;
      ASSERT_EQ(flipped.Test(i), a.Test(i) != (i >= 1 && i <= n)) << words << " words, bit " << i;
    }
    for (const BitVector* changed : {&both, &either, &one, &rest, &flipped}) {
      ASSERT_EQ(changed->KnownCount(), -1);
      ASSERT_EQ(changed->MaximumBit(), maximum);
    }
  }
}

TEST_F(Bits, MergedTakeBlocksOnlyForWhatIsNotZero) {
  BitVector bits(1000000);
  BitVector other(1000000);
  other.Set(100000);
  other.Set(200000);
  other.Clear(200000);
  log();
  for (const auto& merge : std::vector<std::function<void()>>{
           [&] { bits &= other; }, [&] { bits -= other; }, [&] { bits |= other; }}) {
    merge();
  }
  EXPECT_THAT(log(), ElementsAre("alloc 3 8192 zero"));
  bits ^= other;
  EXPECT_EQ(bits.CountSet(), 0);
  EXPECT_EQ(memory_.manager->frees, 0) << "none goes back on account of being zero";
  bits.Zero();
  bits.Set(5);
  bits.Zero();
  bits.ClearRange(0, 999999);
  EXPECT_EQ(memory_.manager->frees, 0);
}

TEST_F(Bits, CopiedByValueKeepTheirStorage) {
  BitVector large = bitsOf({5, 250000}, 300000);
  const int32_t maximum = large.MaximumBit();
  large.CopyValues(bitsOf({9, 90}, 100));
  EXPECT_TRUE(large.IsLarge());
  EXPECT_EQ(large.MaximumBit(), maximum);
  EXPECT_EQ(large.KnownCount(), 2);
  EXPECT_THAT(setBits(large), ElementsAre(9, 90));
  BitVector small = bitsOf({5}, 100);
  small.CopyValues(bitsOf({7, 250000}, 300000));
  EXPECT_FALSE(small.IsLarge());
  EXPECT_GE(small.MaximumBit(), 300000);
  EXPECT_THAT(setBits(small), ElementsAre(7, 250000));
  BitVector wide = bitsOf({600}, 1000);
  wide.CopyValues(bitsOf({7}));
  EXPECT_EQ(wide.MaximumBit(), 1023);
  EXPECT_THAT(setBits(wide), ElementsAre(7));
  wide.CopyValues(BitVector(50000));
  EXPECT_EQ(wide.MaximumBit(), 1023) << "an empty one clears";
  EXPECT_EQ(wide.KnownCount(), 0);
  BitVector other = bitsOf({3}, 140000);
  other.CopyValues(bitsOf({160000}, 400000));
  EXPECT_THAT(setBits(other), ElementsAre(160000));
}

TEST_F(Bits, AreFlippedWithBitZeroAndTheSpareOnes) {
  BitVector bits = bitsOf({0, 5}, 40);
  bits.Not();
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.CountSet(), 62);
  EXPECT_FALSE(bits.Test(0));
  EXPECT_TRUE(bits.Test(63));
  BitVector large(largeMaximum + 1);
  large.Set(7);
  large.Not();
  EXPECT_EQ(large.CountSet(), 131103);
  EXPECT_EQ(memory_.manager->allocations, 3);
}

TEST_F(Bits, AreComplementedFromOne) {
  BitVector bits(100);
  bits.Complement(5);
  EXPECT_THAT(setBits(bits), ElementsAre(1, 2, 3, 4, 5));
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(bits.MaximumBit(), 31) << "it shrinks";
  bits.Set(0);
  bits.Set(20);
  bits.Complement(3);
  EXPECT_THAT(setBits(bits), ElementsAre(0, 4, 5, 20)) << "others stay";
  bits.Complement(31);
  EXPECT_EQ(bits.CountSet(), 1 + 31 - 3);
  bits.Complement(200000);
  EXPECT_TRUE(bits.Test(200000));
  EXPECT_FALSE(bits.Test(200001));
  EXPECT_TRUE(bits.Test(0));
}

TEST_F(Bits, AreNotComplementedBelowZero) {
  BitVector bits = bitsOf({3, 90}, 100);
  bits.Complement(-1);
  EXPECT_EQ(bits.MaximumBit(), 31) << "resized";
  EXPECT_THAT(setBits(bits), ElementsAre(3));
}

TEST_F(Bits, AreAllSetFromOne) {
  BitVector bits = bitsOf({0, 20, 90}, 100);
  bits.SetAll(5);
  EXPECT_EQ(bits.KnownCount(), 5);
  EXPECT_FALSE(bits.Test(0));
  EXPECT_THAT(setBits(bits), ElementsAre(1, 2, 3, 4, 5));
  bits.SetAll(-3);
  EXPECT_EQ(bits.KnownCount(), 0);
  EXPECT_THAT(setBits(bits), IsEmpty());
  for (const int32_t n : {31, 32, 63, 64, 131071, 200000}) {
    bits.SetAll(n);
    EXPECT_EQ(bits.KnownCount(), n);
    EXPECT_EQ(bits.Recount(), n);
    EXPECT_EQ(bits.NextClear(0), n < bits.MaximumBit() ? n + 1 : -1);
  }
}

TEST_F(Bits, OfTheCapacityAreAllSetButBitZero) {
  for (const int32_t maximum : {40, largeMaximum + 1}) {
    BitVector bits(maximum);
    bits.SetCapacity();
    EXPECT_EQ(bits.KnownCount(), bits.MaximumBit());
    EXPECT_EQ(bits.Recount(), bits.MaximumBit());
    EXPECT_FALSE(bits.Test(0));
  }
}

TEST_F(Bits, AreZeroed) {
  BitVector bits = bitsOf({5, 90}, 100);
  bits.Not();
  bits.Zero();
  EXPECT_EQ(bits.KnownCount(), 0);
  EXPECT_EQ(bits.Recount(), 0);
}

TEST_F(Bits, OfARangeAreChanged) {
  for (const int32_t maximum : {127, 200000}) {
    BitVector bits(maximum);
    EXPECT_TRUE(bits.SetRange(30, 70));
    EXPECT_EQ(bits.KnownCount(), -1);
    EXPECT_THAT(setBits(bits), ElementsAreArray(counted(30, 70)));
    EXPECT_TRUE(bits.ClearRange(32, 63));
    EXPECT_THAT(setBits(bits), ElementsAre(30, 31, 64, 65, 66, 67, 68, 69, 70));
    EXPECT_TRUE(bits.ClearRange(-5, 65));
    EXPECT_THAT(setBits(bits), ElementsAre(66, 67, 68, 69, 70));
    bits.CountSet();
    EXPECT_TRUE(bits.SetRange(60, 50)) << "turned round it is empty";
    EXPECT_EQ(bits.KnownCount(), -1);
    EXPECT_EQ(bits.CountSet(), 5);
    EXPECT_FALSE(bits.SetRange(bits.MaximumBit() + 1, INT32_MAX));
    EXPECT_FALSE(bits.ClearRange(bits.MaximumBit() + 1, INT32_MAX));
    EXPECT_EQ(bits.KnownCount(), 5) << "nothing happened";
    EXPECT_TRUE(bits.SetRange(68, INT32_MAX)) << "it ends at the maximum bit";
    EXPECT_EQ(bits.CountSet(), bits.MaximumBit() - 65);
    EXPECT_TRUE(bits.ClearRange(66, 66));
    EXPECT_FALSE(bits.Test(66));
  }
}

TEST_F(Bits, AreShiftedUpwards) {
  BitVector bits = bitsOf({0, 5, 40}, 63);
  bits.Shift(3);
  EXPECT_THAT(setBits(bits), ElementsAre(3, 8, 43));
  EXPECT_EQ(bits.MaximumBit(), 127) << "room for all, whether they are set or not";
  EXPECT_EQ(bits.KnownCount(), -1);
  bits.CountSet();
  bits.Shift(0);
  bits.Shift(-4);
  EXPECT_EQ(bits.KnownCount(), 3);
  bits.Shift(64);
  EXPECT_THAT(setBits(bits), ElementsAre(67, 72, 107));
  bits.Shift(200000);
  EXPECT_THAT(setBits(bits), ElementsAre(200067, 200072, 200107));
}

TEST_F(Bits, AreShiftedLikeTheModel) {
  std::mt19937 random(8);
  for (int round = 0; round < 60; ++round) {
    const auto maximum = static_cast<int32_t>(random() % 200000);
    const auto n = static_cast<int32_t>(random() % 70000);
    BitVector bits(maximum);
    for (int i = 0; i < 3000; ++i) {
      bits.Set(static_cast<int32_t>(random() % (static_cast<uint32_t>(maximum) + 1)));
    }
    std::vector<int32_t> expected = setBits(bits);
    for (int32_t& b : expected) b += n;
    bits.Shift(n);
    ASSERT_EQ(setBits(bits), expected) << maximum << " by " << n;
  }
}

}  // namespace
