#include <cstdio>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/support/assertionlist.h"
#include "tests/support/countingmanager.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using tests::bitsOf;
using tests::EndlessInput;
using tests::MemoryInput;
using tests::MemoryOutput;
using tests::setBits;

constexpr uint32_t tag = 0x315E97D6;

class BitChunk : public testing::Test {
 protected:
  tests::ManagedMemory memory_;
};

std::string bytesOf(const std::vector<uint32_t>& values) {
  MemoryOutput output;
  output.Write(values.data(), static_cast<int64_t>(values.size()));
  output.FlushBuffer();
  return output.bytes;
}

std::string saved(const BitVector& bits, int32_t version = 0) {
  MemoryOutput output;
  output.SetFileVersion(version);
  EXPECT_TRUE(bits.Write(output));
  output.FlushBuffer();
  return output.bytes;
}

// The form that a chunk has.
int32_t formOf(const std::string& chunk) { return chunk[15]; }

// A chunk of a dense vector of `words` words, with numbers of its own.
std::string chunk(uint32_t words, int32_t maximum, int32_t form, int32_t count,
                  const std::vector<uint32_t>& values) {
  std::vector<uint32_t> all = {tag, words, static_cast<uint32_t>(maximum),
                               static_cast<uint32_t>(form), static_cast<uint32_t>(count)};
  all.insert(all.end(), values.begin(), values.end());
  return bytesOf(all);
}

TEST_F(BitChunk, KnowsItsTag) {
  EXPECT_TRUE(BitVector::IsBitVectorTag(0x315E97D6));
  EXPECT_FALSE(BitVector::IsBitVectorTag(0x315E97D7));
}

TEST_F(BitChunk, OfAShortVectorIsDense) {
  BitVector bits = bitsOf({0, 5, 40}, 63);
  EXPECT_EQ(saved(bits), std::string("\x31\x5E\x97\xD6"
                                     "\0\0\0\2"
                                     "\0\0\0\x3F"
                                     "\0\0\0\0"
                                     "\0\0\0\3"
                                     "\0\0\0\x21"
                                     "\0\0\1\0",
                                     28));
  bits.Not();
  bits.Not();
  EXPECT_EQ(saved(bits).substr(16, 4), "\xFF\xFF\xFF\xFF") << "its count is not taken for this";
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_EQ(formOf(saved(BitVector(32 * 32 - 1))), 0) << "however few they are";
}

TEST_F(BitChunk, OfFewBitsIsSparse) {
  BitVector bits = bitsOf({0, 7, 1000, 3199}, 3199);
  EXPECT_EQ(saved(bits), chunk(100, 3199, 1, 4, {0, 7, 1000, 3199}));
  bits.Not();
  bits.Not();
  EXPECT_EQ(saved(bits), chunk(100, 3199, 1, 4, {0, 7, 1000, 3199})) << "it was counted";
  EXPECT_EQ(bits.KnownCount(), 4);
}

TEST_F(BitChunk, IsSparseBelowHalfAsManyBitsAsWords) {
  for (const auto& [words, count, form] :
       std::vector<std::tuple<int32_t, int32_t, int32_t>>{{100, 10, 1},
                                                          {100, 60, 0},
                                                          {100, 49, 1},
                                                          {100, 50, 0},
                                                          {101, 49, 1},
                                                          {101, 50, 0},
                                                          {33, 15, 1},
                                                          {33, 16, 0},
                                                          {32, 0, 0},
                                                          {33, 0, 1}}) {
    BitVector bits(words * 32 - 1);
    if (count > 0) bits.SetRange(3, 2 + count);
    EXPECT_EQ(formOf(saved(bits)), form) << words << " words, " << count << " bits";
  }
}

TEST_F(BitChunk, OfOldFilesIsDense) {
  const BitVector bits = bitsOf({5}, 3199);
  for (const int32_t version : {1, 9, 10, 12})
    EXPECT_EQ(formOf(saved(bits, version)), 0) << version;
  for (const int32_t version : {0, 13, 14}) EXPECT_EQ(formOf(saved(bits, version)), 1) << version;
  BitVector uncounted = bits;
  uncounted.Not();
  uncounted.Not();
  EXPECT_EQ(saved(uncounted, 12).substr(16, 4), "\xFF\xFF\xFF\xFF");
}

TEST_F(BitChunk, IsReadAsItWasWritten) {
  std::mt19937 random(3);
  for (const int32_t maximum : {31, 1023, 1055, 40000, 131071, 140000, 300000}) {
    for (const uint32_t kept : {1U, 2U, 100U, 100000U}) {
      BitVector bits(maximum);
      for (int32_t b = 0; b <= maximum; ++b) {
        if (random() % kept == 0) bits.Set(b);
      }
      const std::string bytes = saved(bits);
      for (const int32_t target : {10, 200000}) {
        BitVector copy = bitsOf({1, 9}, target);
        MemoryInput input(bytes);
        ASSERT_TRUE(copy.Read(input));
        EXPECT_TRUE(copy == bits);
        EXPECT_EQ(copy.MaximumBit(), bits.MaximumBit());
        EXPECT_EQ(copy.IsLarge(), bits.MaximumBit() >= 131071);
        EXPECT_EQ(copy.KnownCount(), formOf(bytes) == 1 ? bits.CountSet() : -1);
        EXPECT_EQ(input.Tell(), static_cast<int64_t>(bytes.size()));
      }
    }
  }
}

TEST_F(BitChunk, TakesBlocksOnlyForWhatIsNotZero) {
  BitVector bits(1000000);
  bits.SetRange(70000, 100000);
  bits.SetRange(500000, 501000);
  const std::string bytes = saved(bits);
  EXPECT_EQ(formOf(bytes), 0);
  memory_.manager->takeLog();
  BitVector copy;
  MemoryInput input(bytes);
  ASSERT_TRUE(copy.Read(input));
  EXPECT_THAT(memory_.manager->takeLog(), ElementsAre("alloc 3 8192 zero", "alloc 4 8192 zero"));
}

TEST(BitChunkWithoutManager, IsReadIntoOnePiece) {
  const tests::UnmanagedMemory memory;
  BitVector bits(300000);
  bits.SetRange(100, 200000);
  BitVector copy;
  MemoryInput input(saved(bits));
  ASSERT_TRUE(copy.Read(input));
  EXPECT_FALSE(copy.IsLarge());
  EXPECT_TRUE(copy == bits);
}

TEST_F(BitChunk, OfAnotherTagChangesNothing) {
  tests::AssertionList assertions;
  BitVector bits = bitsOf({5, 90}, 100);
  MemoryInput input(bytesOf({tag + 1, 1, 31, 0, 0, 7}));
  EXPECT_FALSE(bits.Read(input));
  EXPECT_THAT(setBits(bits), ElementsAre(5, 90));
  EXPECT_EQ(bits.KnownCount(), 2);
  EXPECT_THAT(assertions.take(), IsEmpty());
}

TEST_F(BitChunk, WithoutWordsIsOneClearedWord) {
  for (const std::string& bytes :
       {chunk(0, 500, 0, 3, {77}), chunk(5, 0, 1, 3, {77}), chunk(5, -1, 9, 3, {77})}) {
    BitVector bits = bitsOf({5, 90}, 100);
    MemoryInput input(bytes);
    EXPECT_TRUE(bits.Read(input));
    EXPECT_EQ(bits.MaximumBit(), 31);
    EXPECT_EQ(bits.KnownCount(), -1);
    EXPECT_EQ(bits.CountSet(), 0);
    EXPECT_EQ(input.Tell(), 20) << "nothing behind the numbers is read";
  }
}

TEST_F(BitChunk, GoesByItsWordsNotByItsMaximumBit) {
  BitVector bits;
  MemoryInput input(chunk(2, 5000, 0, 17, {6, 1}));
  EXPECT_TRUE(bits.Read(input));
  EXPECT_EQ(bits.MaximumBit(), 63);
  EXPECT_EQ(bits.KnownCount(), -1) << "nor by its count";
  EXPECT_THAT(setBits(bits), ElementsAre(1, 2, 32));
}

TEST_F(BitChunk, OfAnUnknownFormLeavesNoStorage) {
  tests::AssertionList assertions;
  for (const int32_t form : {2, -1, 77}) {
    BitVector bits = bitsOf({5}, 200000);
    MemoryInput input(chunk(2, 63, form, 1, {6, 1}));
    EXPECT_TRUE(bits.Read(input));
    EXPECT_EQ(bits.MaximumBit(), -1);
    EXPECT_EQ(bits.CountSet(), 0);
    EXPECT_FALSE(bits.Test(5));
    EXPECT_EQ(bits.NextSet(-1), -1);
    EXPECT_THAT(assertions.take(), IsEmpty());
    bits.Resize(40);
    EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/bitvector"));
    EXPECT_EQ(bits.MaximumBit(), 63);
  }
}

TEST_F(BitChunk, CountsSparseBitsOnceAndSkipsThoseBelowZero) {
  BitVector bits;
  MemoryInput input(chunk(2, 63, 1, 5, {7, 7, UINT32_MAX, 0x80000000, 40}));
  EXPECT_TRUE(bits.Read(input));
  EXPECT_THAT(setBits(bits), ElementsAre(7, 40));
  EXPECT_EQ(bits.KnownCount(), 2);
  MemoryInput none(chunk(2, 63, 1, -9, {7}));
  EXPECT_TRUE(bits.Read(none));
  EXPECT_EQ(bits.KnownCount(), 0);
  MemoryInput beyond(chunk(2, 63, 1, 1, {100}));
  EXPECT_TRUE(bits.Read(beyond));
  EXPECT_THAT(setBits(bits), ElementsAre(100)) << "it grows for one that has no room";
}

TEST_F(BitChunk, ThatCannotBeIsRefusedBeforeItTakesMemory) {
  for (const std::string& bytes :
       {chunk(0x4000001, 63, 0, 1, {1}), chunk(UINT32_MAX, 63, 1, 1, {1}),
        chunk(3, 63, 0, 1, {1, 2}), chunk(2, 63, 1, 3, {1, 2}), chunk(0x4000000, 63, 0, 1, {1, 2}),
        chunk(2, 63, 1, INT32_MAX, {1, 2})}) {
    BitVector bits = bitsOf({5, 90}, 200000);
    MemoryInput input(bytes);
    EXPECT_FALSE(bits.Read(input));
    EXPECT_EQ(bits.MaximumBit(), 31);
    EXPECT_EQ(bits.CountSet(), 0);
  }
  EXPECT_EQ(memory_.manager->living(), 0);
}

TEST_F(BitChunk, ThatEndsEarlyIsFalse) {
  BitVector wide(3199);
  wide.SetRange(100, 2000);
  for (const std::string& whole :
       {saved(bitsOf({0, 5, 40}, 63)), saved(bitsOf({7, 90, 3000}, 3199)), saved(wide)}) {
    for (size_t length = 0; length < whole.size(); length += 1 + length / 50) {
      EndlessInput endless(whole.substr(0, length));
      MemoryInput measured(whole.substr(0, length));
      for (MemoryInput* input : {static_cast<MemoryInput*>(&endless), &measured}) {
        BitVector bits = bitsOf({9}, 100);
        ASSERT_FALSE(bits.Read(*input)) << length;
        ASSERT_EQ(bits.CountSet(), length < 20 ? 1 : 0) << "kept until its numbers are there";
      }
    }
  }
}

TEST_F(BitChunk, SurvivesAnyDamage) {
  std::mt19937 random(7);
  const std::string dense = saved(bitsOf({0, 5, 40}, 63));
  const std::string sparse = saved(bitsOf({7, 90, 3000}, 3199));
  for (int round = 0; round < 20000; ++round) {
    std::string bytes = round % 2 == 0 ? dense : sparse;
    for (int i = 0; i <= round % 3; ++i) {
      bytes[4 + random() % (bytes.size() - 4)] = static_cast<char>(random());
    }
    MemoryInput input(bytes);
    BitVector bits;
    bits.Read(input);
    ASSERT_GE(bits.MaximumBit(), -1);
    ASSERT_EQ(bits.NextSet(bits.MaximumBit()), -1);
  }
}

TEST_F(BitChunk, TellsABadMedium) {
  MemoryInput input(saved(bitsOf({5})));
  input.good = false;
  BitVector bits;
  EXPECT_FALSE(bits.Read(input));
  MemoryOutput output;
  output.takes = false;
  EXPECT_FALSE(bits.Write(output));
  BitVector large(100000);
  large.SetRange(0, 99999);
  MemoryOutput full;
  full.refusesFrom = 2;
  EXPECT_FALSE(large.Write(full));
}

TEST_F(BitChunk, OfAMovedFromVectorHasNoWords) {
  BitVector bits(100);
  const BitVector target(std::move(bits));
  EXPECT_EQ(saved(bits), bytesOf({tag, 0, UINT32_MAX, 0, 0}));  // NOLINT: it has a state
}

// ---------------------------------------------------------------------------------------------

std::string shown(const BitVector& bits) {
  std::ostringstream out;
  out << bits;
  return out.str();
}

TEST_F(BitChunk, IsShownEightToALine) {
  EXPECT_EQ(shown(BitVector(40)), "numSet=0\n\n");
  EXPECT_EQ(shown(bitsOf({0, 7})), "numSet=2\n0 7 \n");
  BitVector bits(100);
  bits.SetAll(8);
  EXPECT_EQ(shown(bits), "numSet=8\n1 2 3 4 5 6 7 8 \n\n");
  bits.SetAll(9);
  EXPECT_EQ(shown(bits), "numSet=9\n1 2 3 4 5 6 7 8 \n9 \n");
  bits.Not();
  bits.Not();
  EXPECT_EQ(shown(bits), "numSet=9\n1 2 3 4 5 6 7 8 \n9 \n") << "counted if need be";
}

TEST_F(BitChunk, IsPrintedWithALineMore) {
  testing::internal::CaptureStdout();
  bitsOf({0, 7}).Print();
  std::fflush(stdout);
  std::string text = testing::internal::GetCapturedStdout();
  std::erase(text, '\r');
  EXPECT_EQ(text, "numSet=2\n0 7 \n\n");
}

}  // namespace
