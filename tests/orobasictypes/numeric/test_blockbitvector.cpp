#include "orobasictypes/blockbitvector.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/support/countingmanager.h"
#include "tests/support/fakeheap.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::bitsOf;

constexpr int32_t all = 32768;  // bits of a block

class BlockBits : public testing::Test {
 protected:
  tests::ManagedMemory memory_;
};

std::vector<int32_t> setBits(const BlockBitVector& bits) {
  std::vector<int32_t> result;
  for (int32_t b = bits.NextSet(-1); b >= 0; b = bits.NextSet(b)) result.push_back(b);
  return result;
}

BlockBitVector blocksOf(const std::vector<int32_t>& set, int32_t maximumBit = 0) {
  BlockBitVector bits(maximumBit);
  for (const int32_t b : set) bits.Set(b);
  return bits;
}

// Blocks that are all set, without memory, and the bits of `set` in the others.
BlockBitVector withFull(const std::vector<int32_t>& full, const std::vector<int32_t>& set) {
  BlockBitVector bits;
  for (const int32_t block : full) {
    BitVector range((block + 1) * all - 1);
    range.SetRange(block * all, (block + 1) * all - 1);
    bits |= range;
  }
  for (const int32_t b : set) bits.Set(b);
  return bits;
}

// What the tables say: the count of each block, and whether it has memory.
std::vector<std::pair<int32_t, bool>> states(const BlockBitVector& bits) {
  std::vector<std::pair<int32_t, bool>> result;
  for (int32_t block = 0; block <= bits.LastBlock(); ++block) {
    result.emplace_back(bits.BlockCount(block), bits.HasMemory(block));
  }
  return result;
}

using State = std::pair<int32_t, bool>;

TEST_F(BlockBits, HaveTheirFieldsInOrder) {
  static_assert(sizeof(BlockBitVector) == sizeof(OroShared) + 24);
  BlockBitVector bits(100000);
  bits.Set(40000);
  const char* const fields = reinterpret_cast<const char*>(&bits) + sizeof(OroShared);
  uint32_t** blocks = nullptr;
  int32_t* counts = nullptr;
  int32_t numbers[2];
  std::memcpy(&blocks, fields, 8);
  std::memcpy(&counts, fields + 8, 8);
  std::memcpy(numbers, fields + 16, 8);
  EXPECT_EQ(blocks[0], nullptr);
  EXPECT_EQ(blocks[1][(40000 >> 5) & 0x3ff], 1U << (40000 & 31));
  EXPECT_EQ(counts[1], 1);
  EXPECT_THAT(numbers, ElementsAre(2, 1));
}

TEST_F(BlockBits, HaveNoBlockForTheRemainder) {
  EXPECT_EQ(BlockBitVector(-5).LastBlock(), 0);
  EXPECT_EQ(BlockBitVector(0).LastBlock(), 0);
  EXPECT_EQ(BlockBitVector(32767).LastBlock(), 0);
  EXPECT_EQ(BlockBitVector(32768).LastBlock(), 0);
  EXPECT_EQ(BlockBitVector(65535).LastBlock(), 0);
  EXPECT_EQ(BlockBitVector(65536).LastBlock(), 1);
  EXPECT_THAT(states(BlockBitVector(65536)), ElementsAre(State(0, false), State(0, false)));
  EXPECT_EQ(BlockBitVector(65536).KnownCount(), 0);
}

TEST_F(BlockBits, GrowWhenTheyAreSet) {
  BlockBitVector bits(32768);
  EXPECT_FALSE(bits.Test(32768));
  EXPECT_FALSE(bits.Clear(32768));
  EXPECT_EQ(bits.LastBlock(), 0);
  EXPECT_TRUE(bits.Set(32768));
  EXPECT_TRUE(bits.Test(32768));
  EXPECT_EQ(bits.LastBlock(), 1);
  EXPECT_TRUE(bits.Set(INT32_MAX));
  EXPECT_EQ(bits.LastBlock(), 65535);
  EXPECT_THAT(setBits(bits), ElementsAre(32768, INT32_MAX));
}

TEST_F(BlockBits, TellWhetherABitChanged) {
  BlockBitVector bits;
  EXPECT_TRUE(bits.Set(5));
  EXPECT_FALSE(bits.Set(5));
  EXPECT_EQ(bits.KnownCount(), 1);
  EXPECT_TRUE(bits.Clear(5));
  EXPECT_FALSE(bits.Clear(5));
  EXPECT_EQ(bits.KnownCount(), 0);
  EXPECT_THAT(states(bits), ElementsAre(State(0, true))) << "an emptied block keeps its memory";
  EXPECT_FALSE(bits.Test(5));
  EXPECT_TRUE(bits.Set(7));
  EXPECT_THAT(setBits(bits), ElementsAre(7));
}

TEST_F(BlockBits, BelowZeroDoNotExist) {
  BlockBitVector bits;
  for (const int32_t b : {-1, -32768, INT32_MIN}) {
    EXPECT_FALSE(bits.Set(b));
    EXPECT_FALSE(bits.Clear(b));
    EXPECT_FALSE(bits.Test(b));
  }
  EXPECT_EQ(bits.LastBlock(), 0);
}

TEST_F(BlockBits, OfAFullBlockNeedNoMemory) {
  BlockBitVector bits = withFull({0, 2}, {});
  EXPECT_THAT(states(bits), ElementsAre(State(all, false), State(0, false), State(all, false)));
  EXPECT_TRUE(bits.Test(0));
  EXPECT_TRUE(bits.Test(3 * all - 1));
  EXPECT_FALSE(bits.Test(all));
  EXPECT_FALSE(bits.Set(5)) << "it is set";
  EXPECT_EQ(bits.CountSet(), 2 * all);
  EXPECT_EQ(bits.NextSet(-1), 0);
  EXPECT_EQ(bits.NextSet(all - 1), 2 * all);
  EXPECT_EQ(bits.NextSet(3 * all - 1), -1);
}

TEST_F(BlockBits, ClearedInAFullBlockMakeARealOne) {
  BlockBitVector bits = withFull({0}, {});
  EXPECT_EQ(bits.CountSet(), all);
  EXPECT_TRUE(bits.Clear(5));
  EXPECT_THAT(states(bits), ElementsAre(State(all - 1, true)));
  EXPECT_EQ(bits.KnownCount(), all - 1);
  EXPECT_FALSE(bits.Test(5));
  EXPECT_TRUE(bits.Test(4));
  EXPECT_TRUE(bits.Test(all - 1));
  EXPECT_TRUE(bits.Set(5));
  EXPECT_THAT(states(bits), ElementsAre(State(all, true))) << "filled up it keeps its memory";
  EXPECT_FALSE(bits.Set(5));
  EXPECT_TRUE(bits.Clear(9));
  EXPECT_EQ(bits.KnownCount(), all - 1);
}

TEST_F(BlockBits, KeepUnknownCountsUnknown) {
  BlockBitVector bits(bitsOf({3, 9}, 100));
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_THAT(states(bits), ElementsAre(State(-1, true)));
  EXPECT_TRUE(bits.Clear(3));
  EXPECT_TRUE(bits.Set(4));
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_THAT(states(bits), ElementsAre(State(-1, true)));
  EXPECT_EQ(bits.CountSet(), 2);
  EXPECT_EQ(bits.KnownCount(), 2);
  EXPECT_THAT(states(bits), ElementsAre(State(2, true))) << "each block's count is noted too";
}

TEST_F(BlockBits, AreWalked) {
  const BlockBitVector bits = blocksOf({0, 31, 32, 32767, 32768, 100000});
  EXPECT_EQ(bits.NextSet(-1), 0);
  EXPECT_EQ(bits.NextSet(-77), 0);
  EXPECT_EQ(bits.NextSet(0), 31);
  EXPECT_EQ(bits.NextSet(31), 32) << "the next word";
  EXPECT_EQ(bits.NextSet(32), 32767);
  EXPECT_EQ(bits.NextSet(32767), 32768) << "the next block";
  EXPECT_EQ(bits.NextSet(32768), 100000);
  EXPECT_EQ(bits.NextSet(100000), -1);
  EXPECT_EQ(bits.NextSet(INT32_MAX), -1);
  std::vector<int32_t> visited;
  bits.ForEachSet([&](int32_t b) { visited.push_back(b); });
  EXPECT_EQ(visited, setBits(bits));
}

TEST_F(BlockBits, AreWalkedByAnIterator) {
  const BlockBitVector bits = blocksOf({7, 50000});
  BlockBitVector::Iterator i(bits);
  EXPECT_TRUE(i.AtEnd()) << "before its start, too";
  EXPECT_EQ(i.Current(), -1);
  i.First();
  EXPECT_FALSE(i.AtEnd());
  EXPECT_EQ(i.Current(), 7);
  i.Next();
  EXPECT_EQ(i.Current(), 50000);
  i.Next();
  EXPECT_TRUE(i.AtEnd());
  const BlockBitVector empty;
  BlockBitVector::Iterator none(empty);
  none.First();
  EXPECT_TRUE(none.AtEnd());
}

TEST_F(BlockBits, AreCopiedWithTheirBlocks) {
  const BlockBitVector bits = withFull({1}, {5, 100000});
  const BlockBitVector copy(bits);
  EXPECT_EQ(states(copy), states(bits));
  EXPECT_TRUE(copy == bits);
  EXPECT_EQ(copy.LastBlock(), bits.LastBlock());
}

// All that changes a vector which was copied, or which is the copy.
using Change = void (*)(BlockBitVector&);
const Change changes[] = {
    [](BlockBitVector& bits) { bits.Set(70000); },
    [](BlockBitVector& bits) { bits.Clear(5); },
    [](BlockBitVector& bits) { bits &= blocksOf({5}); },
    [](BlockBitVector& bits) {
      bits |= blocksOf({6, 70000});
    },
    [](BlockBitVector& bits) { bits ^= withFull({0}, {70000}); },
    [](BlockBitVector& bits) {
      bits -= blocksOf({5, 9, 100000});
    },
    [](BlockBitVector& bits) {
      bits |= bitsOf({6, 70000});
    },
    [](BlockBitVector& bits) {
      bits -= bitsOf({5, 100000});
    },
    [](BlockBitVector& bits) {
      bits = bitsOf({7, 65536});
    },
    [](BlockBitVector& bits) {
      bits = blocksOf({8, 99999});
    },
};

TEST_F(BlockBits, CopiedStayAsTheyAreWhenTheOtherChanges) {
  const std::vector<int32_t> set = {5, 9, 100000, 100001};
  for (const Change change : changes) {
    for (const bool isSettled : {false, true}) {
      BlockBitVector bits = blocksOf(set);
      if (isSettled) bits |= blocksOf({9, 100000});
      BlockBitVector expected = isSettled ? blocksOf(set) : BlockBitVector(bitsOf(set));
      change(expected);
      BlockBitVector copy(bits);
      BlockBitVector assigned;
      assigned = copy;
      change(copy);
      EXPECT_THAT(setBits(bits), ElementsAre(5, 9, 100000, 100001));
      EXPECT_EQ(setBits(copy), setBits(expected));
      EXPECT_THAT(setBits(assigned), ElementsAre(5, 9, 100000, 100001));
      change(bits);
      EXPECT_EQ(setBits(bits), setBits(expected));
      EXPECT_THAT(setBits(assigned), ElementsAre(5, 9, 100000, 100001));
      EXPECT_THAT(states(assigned),
                  ElementsAre(State(2, true), State(0, false), State(0, false), State(2, true)));
    }
  }
}

TEST_F(BlockBits, CopiedOutliveEachOther) {
  BlockBitVector copy;
  {
    const BlockBitVector bits = blocksOf({5, 100000});
    copy = bits;
  }
  const BlockBitVector other = blocksOf({7, 100007});  // takes what the pool got back
  EXPECT_THAT(setBits(copy), ElementsAre(5, 100000));
  { const BlockBitVector second(copy); }
  EXPECT_TRUE(copy.Set(6));
  EXPECT_THAT(setBits(copy), ElementsAre(5, 6, 100000));
  EXPECT_THAT(setBits(other), ElementsAre(7, 100007));
}

TEST_F(BlockBits, MovedLeaveNothing) {
  BlockBitVector bits = blocksOf({5, 100000});
  BlockBitVector target(std::move(bits));
  EXPECT_THAT(setBits(target), ElementsAre(5, 100000));
  EXPECT_EQ(bits.LastBlock(), -1);  // NOLINT: it has a state
  EXPECT_FALSE(bits.Test(5));
  EXPECT_FALSE(bits.Clear(5));
  EXPECT_EQ(bits.NextSet(-1), -1);
  EXPECT_EQ(bits.CountSet(), 0);
  bits &= target;
  bits -= target;
  EXPECT_TRUE(BlockBitVector(bits) == bits);
  EXPECT_TRUE(bits.Set(5));
  EXPECT_THAT(setBits(bits), ElementsAre(5));
  BlockBitVector gone(std::move(bits));
  target = bits;  // NOLINT
  EXPECT_EQ(target.CountSet(), 0);
  EXPECT_EQ(target.LastBlock(), 3) << "its table stays";
}

TEST_F(BlockBits, AssignedKeepTheLongerTable) {
  BlockBitVector target = blocksOf({5, 200000});
  const BlockBitVector source = withFull({1}, {9});
  target = source;
  EXPECT_EQ(target.LastBlock(), 6);
  EXPECT_THAT(states(target),
              ElementsAre(State(1, true), State(all, false), State(0, false), State(0, false),
                          State(0, false), State(0, false), State(0, false)));
  EXPECT_EQ(target.KnownCount(), source.KnownCount());
  EXPECT_TRUE(target == source);
  BlockBitVector wide(1000000);
  BlockBitVector small;
  small = wide;
  EXPECT_EQ(small.LastBlock(), 0) << "no further than the last block that is not empty";
  const BlockBitVector& self = target;
  target = self;
  EXPECT_TRUE(target == source);
}

TEST_F(BlockBits, AssignedFromAVectorAreNotCounted) {
  for (const int32_t maximum : {100, 70000, 200000}) {
    BitVector source(maximum);
    source.Set(7);
    source.Set(maximum);
    BlockBitVector bits = blocksOf({3, 400000});
    bits = source;
    const int32_t last = source.MaximumBit() >> 15;
    for (int32_t block = 0; block <= bits.LastBlock(); ++block) {
      EXPECT_EQ(bits.BlockCount(block), block <= last ? -1 : 0);
      EXPECT_EQ(bits.HasMemory(block), block <= last) << "zeros included";
    }
    EXPECT_EQ(bits.KnownCount(), -1);
    EXPECT_THAT(setBits(bits), ElementsAre(7, maximum));
  }
}

TEST_F(BlockBits, AreEqualByTheirBits) {
  EXPECT_TRUE(blocksOf({5}) == blocksOf({5}, 1000000));
  EXPECT_FALSE(blocksOf({5}) == blocksOf({6}));
  EXPECT_FALSE(blocksOf({5, 6}) == blocksOf({6}));
  EXPECT_FALSE(blocksOf({5, 100000}) == blocksOf({5, 6}));
  EXPECT_TRUE(BlockBitVector(bitsOf({5})) == blocksOf({5})) << "unknown counts are taken";
  BlockBitVector filled;
  for (int32_t b = 0; b < all; ++b) filled.Set(b);
  EXPECT_TRUE(filled.HasMemory(0));
  EXPECT_TRUE(filled == withFull({0}, {}));
  EXPECT_TRUE(withFull({0}, {}) == filled);
  EXPECT_FALSE(withFull({0}, {}) == withFull({1}, {}));
  EXPECT_FALSE(withFull({0}, {all}) == withFull({1}, {0}));
  BlockBitVector unknown(bitsOf({5}));
  EXPECT_TRUE(unknown == unknown);
  EXPECT_EQ(unknown.KnownCount(), 1);
}

// ---------------------------------------------------------------------------------------------

// Every state of a block with every other: empty, empty with memory, full, full with memory, mixed,
// mixed and not counted. Block i of the one meets all of the other's.
std::vector<BlockBitVector> oneBlockVectors() {
  std::vector<BlockBitVector> vectors;
  vectors.emplace_back();
  vectors.push_back(blocksOf({9}));
  vectors.back().Clear(9);
  vectors.push_back(withFull({0}, {}));
  vectors.push_back(withFull({0}, {}));
  vectors.back().Clear(9);
  vectors.back().Set(9);
  vectors.push_back(blocksOf({0, 9, 40, 32767}));
  vectors.emplace_back(bitsOf({9, 41, 30000}));
  vectors.emplace_back(BitVector(100));  // not counted, and empty
  BitVector full(32767);
  full.Not();
  vectors.emplace_back(full);  // not counted, and full
  return vectors;
}

using Combine = void (*)(BlockBitVector&, const BlockBitVector&);
using CombineBits = void (*)(BlockBitVector&, const BitVector&);
using CombineLeft = void (*)(BitVector&, const BlockBitVector&);

struct Operation {
  bool (*expected)(bool, bool);
  Combine combine;
  CombineBits combineBits;
  CombineLeft combineLeft;
};

const Operation operations[] = {
    {[](bool a, bool b) { return a && b; },
     [](BlockBitVector& a, const BlockBitVector& b) { a &= b; },
     [](BlockBitVector& a, const BitVector& b) { a &= b; },
     [](BitVector& a, const BlockBitVector& b) { a &= b; }},
    {[](bool a, bool b) { return a || b; },
     [](BlockBitVector& a, const BlockBitVector& b) { a |= b; },
     [](BlockBitVector& a, const BitVector& b) { a |= b; },
     [](BitVector& a, const BlockBitVector& b) { a |= b; }},
    {[](bool a, bool b) { return a != b; },
     [](BlockBitVector& a, const BlockBitVector& b) { a ^= b; },
     [](BlockBitVector& a, const BitVector& b) { a ^= b; },
     [](BitVector& a, const BlockBitVector& b) { a ^= b; }},
    {[](bool a, bool b) { return a && !b; },
     [](BlockBitVector& a, const BlockBitVector& b) { a -= b; },
     [](BlockBitVector& a, const BitVector& b) { a -= b; },
     [](BitVector& a, const BlockBitVector& b) { a -= b; }},
};

// Blocks that are known to be uniform have no memory; counts are right or unknown.
void expectTidy(const BlockBitVector& bits) {
  for (int32_t block = 0; block <= bits.LastBlock(); ++block) {
    const int32_t known = bits.BlockCount(block);
    EXPECT_EQ(bits.HasMemory(block), known != 0 && known != all) << "block " << block;
    int32_t count = 0;
    for (int32_t b = block * all; b < (block + 1) * all; ++b) count += bits.Test(b);
    EXPECT_TRUE(known == -1 || known == count) << "block " << block;
  }
}

TEST_F(BlockBits, CombineInEveryState) {
  for (const Operation& operation : operations) {
    const std::vector<BlockBitVector> vectors = oneBlockVectors();
    for (size_t i = 0; i < vectors.size(); ++i) {
      for (size_t j = 0; j < vectors.size(); ++j) {
        BlockBitVector left(vectors[i]);
        const BlockBitVector right(vectors[j]);
        operation.combine(left, right);
        ASSERT_EQ(left.KnownCount(), -1);
        expectTidy(left);
        BitVector bits(right);
        BlockBitVector fromBits(vectors[i]);
        operation.combineBits(fromBits, bits);
        expectTidy(fromBits);
        BitVector inPlace(vectors[i]);
        operation.combineLeft(inPlace, right);
        for (int32_t b = 0; b < all; ++b) {
          const bool expected = operation.expected(vectors[i].Test(b), right.Test(b));
          ASSERT_EQ(left.Test(b), expected) << i << " with " << j << " at " << b;
          ASSERT_EQ(fromBits.Test(b), expected) << i << " with " << j << " at " << b;
          ASSERT_EQ(inPlace.Test(b), expected) << i << " with " << j << " at " << b;
        }
      }
    }
  }
}

TEST_F(BlockBits, CombinedBecomeEmptyOrFullWithoutMemory) {
  BlockBitVector low(32767);
  BlockBitVector high(32767);
  for (int32_t b = 0; b < all; ++b) (b < 1000 ? low : high).Set(b);
  BlockBitVector bits(low);
  bits |= high;
  EXPECT_THAT(states(bits), ElementsAre(State(all, false)));
  bits = low;
  bits &= high;
  EXPECT_THAT(states(bits), ElementsAre(State(0, false)));
  bits = low;
  bits ^= high;
  EXPECT_THAT(states(bits), ElementsAre(State(all, false)));
  bits = low;
  const BlockBitVector& self = bits;
  bits -= self;
  EXPECT_THAT(states(bits), ElementsAre(State(0, false)));
  bits = low;
  bits ^= withFull({0}, {});
  EXPECT_THAT(states(bits), ElementsAre(State(all - 1000, true)));
}

TEST_F(BlockBits, CombinedGiveUpMemoryThatSingleBitsLeft) {
  BlockBitVector emptied = blocksOf({9});
  emptied.Clear(9);
  BlockBitVector filled = withFull({0}, {});
  filled.Clear(9);
  filled.Set(9);
  const BitVector none(32767);
  for (const Operation& operation : operations) {
    BlockBitVector bits(emptied);
    ASSERT_TRUE(bits.HasMemory(0));
    operation.combine(bits, BlockBitVector());
    EXPECT_THAT(states(bits), ElementsAre(State(0, false)));
    BlockBitVector same(emptied);
    operation.combineBits(same, none);
    EXPECT_FALSE(same.HasMemory(0) && same.BlockCount(0) == 0);
  }
  filled |= BlockBitVector();
  EXPECT_THAT(states(filled), ElementsAre(State(all, false)));
}

TEST_F(BlockBits, CombinedWithThemselves) {
  for (const BlockBitVector& start : oneBlockVectors()) {
    for (const Operation& operation : operations) {
      BlockBitVector bits(start);
      const BlockBitVector& self = bits;
      operation.combine(bits, self);
      for (int32_t b = 0; b < all; b += 3) {
        ASSERT_EQ(bits.Test(b), operation.expected(start.Test(b), start.Test(b)));
      }
    }
  }
}

TEST_F(BlockBits, UnitedGrowToTheLastBlockInUse) {
  BlockBitVector bits;
  bits |= blocksOf({100000}, 2000000);
  EXPECT_EQ(bits.LastBlock(), 3);
  bits ^= bitsOf({200000}, 500000);
  EXPECT_EQ(bits.LastBlock(), 6);
  bits &= blocksOf({200000}, 2000000);
  EXPECT_EQ(bits.LastBlock(), 6);
  EXPECT_THAT(setBits(bits), ElementsAre(200000));
}

TEST_F(BlockBits, OnTheRightOfAVectorTakeItsShortWays) {
  BitVector bits = bitsOf({5, 90}, 100);
  bits |= BlockBitVector(500000);
  EXPECT_EQ(bits.KnownCount(), 2);
  bits -= BlockBitVector(0);
  EXPECT_EQ(bits.KnownCount(), 2);
  BitVector none(100);
  none &= blocksOf({5});
  EXPECT_EQ(none.KnownCount(), 0);
  none -= blocksOf({5});
  EXPECT_EQ(none.KnownCount(), 0);
  bits &= BlockBitVector(0);
  EXPECT_EQ(bits.KnownCount(), 0) << "an empty one clears";
  EXPECT_EQ(bits.MaximumBit(), 127);
  bits |= blocksOf({40}, 500000);
  EXPECT_EQ(bits.MaximumBit(), 127);
  EXPECT_EQ(bits.KnownCount(), -1);
  BitVector grown = bitsOf({1});
  grown |= blocksOf({40});
  EXPECT_EQ(grown.MaximumBit(), 127) << "asked for the end of word 1";
  BitVector filled;
  filled ^= withFull({1}, {});
  EXPECT_EQ(filled.CountSet(), all);
  EXPECT_TRUE(filled.Test(65535));
}

TEST_F(BlockBits, OnTheRightTakeBlocksOnlyForWhatIsNotZero) {
  BitVector bits(1000000);
  const BlockBitVector seventh = withFull({7}, {});
  memory_.manager->takeLog();
  bits |= blocksOf({100000}, 900000);
  EXPECT_THAT(memory_.manager->takeLog(), ElementsAre(testing::EndsWith("8192 zero")));
  bits &= seventh;
  bits -= seventh;
  EXPECT_THAT(memory_.manager->takeLog(), IsEmpty());
}

TEST_F(BlockBits, MakeAVectorThatEndsWithTheLastBlock) {
  const BlockBitVector source = withFull({1}, {5, 200});
  const BitVector made(source);
  EXPECT_EQ(made.CountSet(), all + 2);
  EXPECT_TRUE(made.Test(200));
  EXPECT_TRUE(made.Test(65535));
  BitVector bits = bitsOf({9, 900000}, 1000000);
  BlockBitVector counted = blocksOf({7, 140000}, 5000000);
  bits = counted;
  EXPECT_EQ(bits.KnownCount(), 2);
  EXPECT_THAT(tests::setBits(bits), ElementsAre(7, 140000));
  EXPECT_EQ(bits.MaximumBit(), 196607);
  bits = BlockBitVector(bitsOf({3}));
  EXPECT_EQ(bits.KnownCount(), -1);
  EXPECT_THAT(tests::setBits(bits), ElementsAre(3));
  bits = BlockBitVector(5000000);
  EXPECT_EQ(bits.MaximumBit(), 31);
  EXPECT_EQ(bits.KnownCount(), 0);
}

// ---------------------------------------------------------------------------------------------

TEST_F(BlockBits, ComeFromThePoolAndGoBackToIt) {
  { blocksOf({5, 40000}); }
  tests::FakeHeap heap;
  {
    BlockBitVector bits = blocksOf({5, 40000});
    EXPECT_THAT(setBits(bits), ElementsAre(5, 40000)) << "what the pool gives is not clear";
  }
  EXPECT_THAT(heap.sizes, testing::Each(testing::Ne(4096U)));
}

TEST_F(BlockBits, ThePoolKeepsFiveHundredAndTwelveBlocks) {
  const auto useBlocks = [](int32_t count) {
    BlockBitVector bits;
    for (int32_t block = 0; block < count; ++block) bits.Set(block * all);
  };
  useBlocks(600);
  tests::FakeHeap heap;
  useBlocks(600);
  EXPECT_EQ(heap.allocations, 88 + 2) << "and the two tables";
}

// More blocks than are added at a time, of which some are not counted.
TEST_F(BlockBits, AreCountedWhereSomeBlocksAreNot) {
  constexpr int32_t all = BlockBitVector::kBlockBits;
  for (const int32_t blocks : {1, 15, 16, 17, 32, 50}) {
    BitVector flat(blocks * all - 1);
    for (int32_t block = 0; block < blocks; ++block) flat.Set(block * all + 7 * block);
    BlockBitVector bits(flat);
    ASSERT_EQ(bits.BlockCount(0), -1);
    EXPECT_EQ(bits.Recount(), blocks);
    for (int32_t block = 0; block < blocks; ++block) EXPECT_EQ(bits.BlockCount(block), 1);
    EXPECT_EQ(bits.Recount(), blocks) << "of counts that are known";
    BlockBitVector full(blocks * all);
    for (int32_t b = 0; b < all; ++b) full.Set((blocks - 1) * all + b);
    full |= bits;
    EXPECT_EQ(full.Recount(), all + blocks - 1);
  }
}

TEST_F(BlockBits, CopiedTakeABlockWhenTheyChange) {
  BlockBitVector bits;
  for (int32_t block = 0; block < 600; ++block) bits.Set(block * all);  // more than the pool has
  tests::FakeHeap heap;
  const auto blocksTaken = [&heap] {
    const auto taken = std::count(heap.sizes.begin(), heap.sizes.end(), size_t{4096});
    heap.sizes.clear();
    return taken;
  };
  BlockBitVector copy(bits);
  BlockBitVector merged;
  merged |= bits;
  merged |= copy;
  EXPECT_EQ(blocksTaken(), 0);
  EXPECT_FALSE(copy.Set(all));
  EXPECT_FALSE(copy.Clear(all + 1));
  EXPECT_EQ(blocksTaken(), 0) << "no bit has changed";
  EXPECT_TRUE(copy.Set(all + 1));
  EXPECT_TRUE(copy.Set(all + 2));
  EXPECT_TRUE(copy.Clear(2 * all));
  EXPECT_EQ(blocksTaken(), 2);
  EXPECT_TRUE(merged.Set(all + 3));
  EXPECT_EQ(blocksTaken(), 1);
  EXPECT_TRUE(bits.Set(all + 4));
  EXPECT_EQ(blocksTaken(), 0) << "nobody else has that one any more";
  EXPECT_FALSE(copy.Test(all + 4));
  EXPECT_FALSE(merged.Test(all + 4));
}

// Made before the pool, and gone after it.
BlockBitVector lastOfAll;

TEST_F(BlockBits, OfStaticLifeOutliveThePool) {
  lastOfAll.Set(5);
  EXPECT_TRUE(lastOfAll.HasMemory(0)) << "which the end of the process frees; the sanitizers look";
}

// A million random steps beside a plain set, with blocks that fill up and empty.
class BlockWalk {
 public:
  explicit BlockWalk(uint32_t seed) : random_(seed) {}

  void run() {
    for (int step = 0; step < 1000000; ++step) {
      const size_t i = draw(2);
      const uint32_t choice = draw(100000);
      if (choice < 10) {
        change(i, 1 - i);
      } else {
        touch(bits_[i], models_[i], choice);
      }
      if (step % 50000 == 0 || choice < 10) check(i);
      if (testing::Test::HasFatalFailure()) FAIL() << "step " << step;
    }
  }

 private:
  static constexpr int32_t room = 6 * all;
  using Model = std::vector<char>;

  uint32_t draw(uint32_t limit) { return static_cast<uint32_t>(random_() % limit); }

  void touch(BlockBitVector& bits, Model& model, uint32_t choice) {
    const auto b = static_cast<int32_t>(draw(room));
    char& known = model[static_cast<size_t>(b)];
    if (choice < 40000) {
      ASSERT_EQ(bits.Set(b), known == 0);
      known = 1;
    } else if (choice < 60000) {
      ASSERT_EQ(bits.Clear(b), known != 0);
      known = 0;
    } else if (choice < 90000) {
      ASSERT_EQ(bits.Test(b), known != 0);
    } else {
      int32_t next = b + 1;
      while (next < room && model[static_cast<size_t>(next)] == 0) ++next;
      ASSERT_EQ(bits.NextSet(b), next < room ? next : -1);
    }
  }

  void change(size_t i, size_t j) {
    const uint32_t kind = draw(10);
    if (kind < 4) {
      operations[kind].combine(bits_[i], bits_[j]);
      for (size_t b = 0; b < models_[i].size(); ++b) {
        models_[i][b] = operations[kind].expected(models_[i][b] != 0, models_[j][b] != 0);
      }
    } else if (kind < 8) {
      const auto from = static_cast<int32_t>(draw(room));
      const auto to = static_cast<int32_t>(std::min(from + draw(4 * all), uint32_t{room - 1}));
      BitVector range(to);
      range.SetRange(from, to);
      operations[kind - 4].combineBits(bits_[i], range);
      for (int32_t b = 0; b < room; ++b) {
        char& bit = models_[i][static_cast<size_t>(b)];
        bit = operations[kind - 4].expected(bit != 0, b >= from && b <= to);
      }
    } else if (kind == 8) {
      bits_[i] = bits_[j];
      models_[i] = models_[j];
    } else {
      bits_[i] = BitVector(bits_[j]);
      models_[i] = models_[j];
    }
  }

  void check(size_t i) {
    const auto count = static_cast<int32_t>(std::count(models_[i].begin(), models_[i].end(), 1));
    for (int32_t b = 0; b < room; ++b) {
      ASSERT_EQ(bits_[i].Test(b), models_[i][static_cast<size_t>(b)] != 0) << b;
    }
    ASSERT_TRUE(bits_[i].KnownCount() == -1 || bits_[i].KnownCount() == count);
    if (draw(2) == 0) {
      ASSERT_EQ(bits_[i].CountSet(), count);
    } else {
      ASSERT_EQ(bits_[i] == bits_[1 - i], models_[0] == models_[1]);
    }
  }

  std::mt19937 random_;
  BlockBitVector bits_[2] = {BlockBitVector(room), BlockBitVector()};
  Model models_[2] = {Model(room), Model(room)};
};

// Random runs, copied and combined, beside plain vectors: blocks with few boundaries, which several
// vectors have together.
class RunWalk {
 public:
  explicit RunWalk(uint32_t seed) : random_(seed) {}

  void run() {
    for (int step = 0; step < 3000; ++step) {
      const size_t i = draw(kept);
      change(i, draw(kept));
      check(step % 20 == 0 ? draw(kept) : i);
      if (testing::Test::HasFailure()) FAIL() << "step " << step;
    }
  }

 private:
  static constexpr int32_t room = 70 * all;
  static constexpr size_t kept = 4;

  uint32_t draw(size_t limit) { return static_cast<uint32_t>(random_() % limit); }
  int32_t place() { return static_cast<int32_t>(draw(room)); }

  BitVector someRange() {
    const int32_t from = place();
    const uint32_t lengths[] = {600, all, 20 * all};
    const auto length = static_cast<int32_t>(draw(lengths[draw(3)]));
    BitVector range(room - 1);
    range.SetRange(from, std::min(from + length, room - 1));
    return range;
  }
  void combine(size_t i, const BlockBitVector& operand, const BitVector& model, uint32_t kind) {
    operations[kind].combine(bits_[i], operand);
    if (kind == 0) models_[i] &= model;
    if (kind == 1) models_[i] |= model;
    if (kind == 2) models_[i] ^= model;
    if (kind == 3) models_[i] -= model;
  }
  void change(size_t i, size_t j) {
    const uint32_t kind = draw(12);
    if (kind < 4) {
      combine(i, bits_[j], models_[j], kind);
    } else if (kind < 8) {
      const BitVector range = someRange();
      BlockBitVector operand(range);
      if (draw(2) == 0) operand |= BlockBitVector(operand);  // settles what is all equal
      combine(i, operand, range, kind == 4 ? 0 : draw(3) + 1);
    } else if (kind == 8) {
      const BitVector range = someRange();
      operations[1].combineBits(bits_[i], range);
      models_[i] |= range;
    } else if (kind == 9) {
      bits_[i] = bits_[j];
      models_[i] = models_[j];
    } else if (kind == 10) {
      BlockBitVector copy(bits_[j]);
      copy |= bits_[i];
      bits_[i] = copy;
      models_[i] |= models_[j];
    } else {
      for (int32_t b = place(), end = std::min(b + 40, room); b < end; b += 7) {
        bits_[i].Set(b);
        models_[i].Set(b);
        if (b % 3 == 0) bits_[i].Clear(b + 1);
        if (b % 3 == 0) models_[i].Clear(b + 1);
      }
    }
  }
  void check(size_t i) {
    ASSERT_TRUE(BitVector(bits_[i]) == models_[i]);
    const auto blocks = static_cast<uint32_t>(bits_[i].LastBlock() + 1);
    for (int k = 0; k < 3; ++k) {
      const auto block = static_cast<int32_t>(draw(blocks));
      const int32_t known = bits_[i].BlockCount(block);
      const int32_t count =
          models_[i].CountAfter(block * all - 1) - models_[i].CountAfter((block + 1) * all - 1);
      ASSERT_TRUE(known == -1 || known == count) << "block " << block;
      ASSERT_TRUE(known == 0 || known == all || bits_[i].HasMemory(block)) << "block " << block;
    }
  }

  std::mt19937 random_;
  BlockBitVector bits_[kept] = {BlockBitVector(room), BlockBitVector(), BlockBitVector(room),
                                BlockBitVector()};
  BitVector models_[kept] = {BitVector(room - 1), BitVector(room - 1), BitVector(room - 1),
                             BitVector(room - 1)};
};

TEST_F(BlockBits, OfRunsBehaveLikeAPlainVector) {
  memory_.manager->logs = false;
  RunWalk(3).run();
}

TEST_F(BlockBits, OfRunsBehaveLikeAPlainVectorOnTheLowestLevel) {
  memory_.manager->logs = false;
  testaccess::limitProcessorLevel(kKelBaseline);
  RunWalk(4).run();
  testaccess::limitProcessorLevel(kKelAvx512);
}

TEST_F(BlockBits, BehaveLikeAPlainSet) {
  memory_.manager->logs = false;
  BlockWalk(1).run();
}

TEST(BlockBitsWithoutManager, BehaveLikeAPlainSetOnTheLowestLevel) {
  const tests::UnmanagedMemory memory;
  testaccess::limitProcessorLevel(kKelBaseline);
  BlockWalk(2).run();
  testaccess::limitProcessorLevel(kKelAvx512);
}

}  // namespace
