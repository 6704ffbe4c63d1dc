#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interfaces/IOroRandom.h"
#include "orobasictypes/bitvector.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/support/countingmanager.h"
#include "tests/support/slotnumber.h"

namespace {

using OroMM::IntArray;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using tests::bitsOf;
using tests::setBits;

class BitMaps : public testing::Test {
 protected:
  // The first entries of a map; the rest are 0.
  static void fill(IntArray& map, const std::vector<int32_t>& entries) {
    map.Resize(static_cast<int32_t>(entries.size()), false);
    for (size_t i = 0; i < entries.size(); ++i) map.Set(static_cast<int32_t>(i), entries[i]);
  }
  // Nothing but the block that is looked at exists.
  IntArray map(const std::vector<int32_t>& entries) {
    IntArray made;
    fill(made, entries);
    return made;
  }

  tests::ManagedMemory memory_;
};

// Answers from a list, then 0, and tells what it was asked.
class FakeRandom : public IOroRandom {
 public:
  static constexpr const char* className() { return "FakeRandom"; }
  using Offers = OroOffers<FakeRandom, IOroRandom>;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t next(int32_t n) override {
    asked.push_back(n);
    return asked.size() <= answers.size() ? answers[asked.size() - 1] : 0;
  }
  void seed(uint32_t value) override { seeds.push_back(value); }

  std::vector<int32_t> answers;
  std::vector<int32_t> asked;
  std::vector<uint32_t> seeds;
};

TEST_F(BitMaps, CombineTheBitsThatEntriesName) {
  const IntArray targets = map({50, 0, 7, 7, 40, 0, 100});
  const BitVector other = bitsOf({0, 1, 2, 4, 6});
  const auto start = [] { return bitsOf({7, 40, 60}, 63); };
  BitVector bits = start();
  bits.AndMapped(other, targets);  // 7 and 2, 7 and 3, 40 and 4
  EXPECT_THAT(setBits(bits), ElementsAre(40, 60));
  EXPECT_EQ(bits.MaximumBit(), 63);
  EXPECT_EQ(bits.KnownCount(), -1);
  bits = start();
  bits.OrMapped(other, targets);
  EXPECT_THAT(setBits(bits), ElementsAre(7, 40, 50, 60, 100));
  EXPECT_EQ(bits.MaximumBit(), 127) << "it grows";
  bits = start();
  bits.XorMapped(other, targets);
  EXPECT_THAT(setBits(bits), ElementsAre(50, 60, 100)) << "7 is met twice: by 2, by 3";
  bits = start();
  bits.MinusMapped(other, targets);
  EXPECT_THAT(setBits(bits), ElementsAre(60));
  bits = start();
  bits.FlipMapped(targets);
  EXPECT_THAT(setBits(bits), ElementsAre(7, 50, 60, 100)) << "twice flipped";
  bits = start();
  bits.CopyMapped(other, targets);
  EXPECT_THAT(setBits(bits), ElementsAre(40, 50, 60, 100)) << "the last one counts";
  EXPECT_EQ(bits.KnownCount(), -1);
}

TEST_F(BitMaps, WalkTheWholeMapAndSkipWhatIsAbsent) {
  IntArray targets(10 * 2048);
  targets.Set(9 * 2048 + 5, 3);
  memory_.manager->takeLog();
  BitVector bits(100);
  bits.FlipMapped(targets);
  EXPECT_THAT(setBits(bits), ElementsAre(3));
  BitVector other(40000);
  other.Set(9 * 2048 + 5);
  bits.XorMapped(other, targets);
  EXPECT_THAT(setBits(bits), IsEmpty());
  EXPECT_THAT(memory_.manager->takeLog(), IsEmpty());
}

TEST_F(BitMaps, MayBeTheirOwnOther) {
  BitVector bits = bitsOf({1, 2});
  bits.CopyMapped(bits, map({0, 3, 1, 4}));
  EXPECT_THAT(setBits(bits), ElementsAre(1, 2, 3, 4)) << "bit 3 was set on the way";
}

TEST_F(BitMaps, CompactTakesTheMaskedPlacesFromOneOn) {
  BitVector bits = bitsOf({0, 10, 30, 31, 90}, 127);
  bits.Compact(bitsOf({10, 20, 31, 90, 100}, 200));
  EXPECT_THAT(setBits(bits), ElementsAre(0, 1, 3, 4)) << "bit 0 is never a target";
  EXPECT_EQ(bits.MaximumBit(), 31);
  EXPECT_EQ(bits.KnownCount(), -1);
  bits.Compact(BitVector(100));
  EXPECT_THAT(setBits(bits), ElementsAre(0));
}

TEST_F(BitMaps, CompactWithBitZeroInTheMaskMovesInPlace) {
  BitVector bits = bitsOf({0, 5}, 63);
  bits.Compact(bitsOf({0, 1, 2, 5, 6}, 63));
  // 0 to 1, then 1 (which is now bit 0's) to 2, that to 3; 5 to 4, 6 to 5.
  EXPECT_THAT(setBits(bits), ElementsAre(0, 1, 2, 3, 4));
  BitVector all = bitsOf({0}, 31);
  BitVector mask(31);
  mask.Not();
  all.Compact(mask);
  EXPECT_THAT(setBits(all), ElementsAreArray([] {
                std::vector<int32_t> expected(33);
                std::iota(expected.begin(), expected.end(), 0);
                return expected;
              }()));
}

TEST_F(BitMaps, RemoveMaskedClosesTheGaps) {
  BitVector bits = bitsOf({0, 1, 5, 10, 40}, 63);
  bits.RemoveMasked(bitsOf({1, 2, 3, 11, 12}, 127));
  EXPECT_THAT(setBits(bits), ElementsAre(0, 2, 7, 35));
  EXPECT_EQ(bits.MaximumBit(), 63);
  EXPECT_EQ(bits.KnownCount(), -1);
}

TEST_F(BitMaps, RemoveMaskedClearsTheLastKeptPlace) {
  BitVector bits = bitsOf({5, 63}, 63);
  bits.RemoveMasked(BitVector(0));
  EXPECT_THAT(setBits(bits), ElementsAre(5)) << "even with an empty mask";
}

TEST_F(BitMaps, RemoveMaskedKnowsTheLargestPlace) {
  BitVector bits = bitsOf({5, INT32_MAX - 1, INT32_MAX}, INT32_MAX);
  bits.RemoveMasked(BitVector(0));
  EXPECT_EQ(bits.MaximumBit(), INT32_MAX);
  EXPECT_THAT(setBits(bits), ElementsAre(5, INT32_MAX - 1));
}

TEST_F(BitMaps, RemoveMaskedShrinksBelowHalf) {
  BitVector bits(127);
  bits.Not();
  BitVector mask(127);
  mask.SetRange(64, 127);
  bits.RemoveMasked(mask);  // last is 63, and 127 / 2 is 63
  EXPECT_EQ(bits.MaximumBit(), 127);
  EXPECT_EQ(bits.CountSet(), 63);
  BitVector again(127);
  again.Not();
  mask.Set(63);
  again.RemoveMasked(mask);
  EXPECT_EQ(again.MaximumBit(), 63);
  EXPECT_EQ(again.CountSet(), 62);
  BitVector all = bitsOf({3}, 127);
  mask.Not();
  mask.SetRange(0, 127);
  all.RemoveMasked(mask);
  EXPECT_EQ(all.MaximumBit(), 31);
  EXPECT_THAT(setBits(all), IsEmpty());
}

TEST_F(BitMaps, RemapMovesBitsDown) {
  BitVector bits = bitsOf({0, 2, 5, 9, 40}, 63);
  bits.Remap(map({0, 1, 0, 2, 3, 4, 0, 7, 0, 5}));
  // The map ends at 2047, so 40 is cleared too; the last target is 5.
  EXPECT_THAT(setBits(bits), ElementsAre(4, 5));
  EXPECT_EQ(bits.MaximumBit(), 31);
  EXPECT_EQ(bits.KnownCount(), -1);
}

TEST_F(BitMaps, RemapEndsAtTheLastTargetNotAtTheLargest) {
  BitVector bits = bitsOf({100, 200}, 255);
  IntArray targets(2048);
  targets.Set(100, 90);
  targets.Set(200, 40);
  targets.Set(201, 33);  // its bit is clear, and it counts
  bits.Remap(targets);
  EXPECT_EQ(bits.MaximumBit(), 63);
  EXPECT_THAT(setBits(bits), ElementsAre(40));
}

TEST_F(BitMaps, RemapLeavesWhatTheMapDoesNotReach) {
  BitVector bits = bitsOf({5, 3000}, 4000);
  IntArray targets(2048);
  targets.Set(5, 5);
  targets.Set(2000, 3900);
  bits.Remap(targets);
  EXPECT_THAT(setBits(bits), ElementsAre(5, 3000));
  BitVector none = bitsOf({5, 90}, 127);
  none.Remap(IntArray(2048));
  EXPECT_THAT(setBits(none), IsEmpty());
  EXPECT_EQ(none.MaximumBit(), 127) << "there is no last target";
}

TEST_F(BitMaps, PermuteLosesNoBit) {
  std::mt19937 random(5);
  for (const int32_t count : {5, 100, 5000, 150000}) {
    std::vector<int32_t> targets(static_cast<size_t>(count) + 1);
    std::iota(targets.begin(), targets.end(), 0);
    std::shuffle(targets.begin() + 1, targets.end(), random);
    BitVector bits(count);
    std::vector<int32_t> expected;
    for (int32_t b = 0; b <= count; b += 3) {
      bits.Set(b);
      expected.push_back(targets[static_cast<size_t>(b)]);
    }
    std::sort(expected.begin(), expected.end());
    const int32_t maximum = bits.MaximumBit();
    bits.Permute(map(targets));
    EXPECT_EQ(setBits(bits), expected);
    EXPECT_EQ(bits.MaximumBit(), maximum);
    EXPECT_EQ(bits.KnownCount(), -1);
  }
}

TEST_F(BitMaps, PermuteClearsWhatHasNoTargetButBitZero) {
  BitVector bits = bitsOf({0, 1, 2, 3}, 4000);
  bits.Set(3500);
  bits.Permute(map({0, 2, 0, 1}));
  EXPECT_THAT(setBits(bits), ElementsAre(0, 1, 2, 3500)) << "what lies behind the map stays";
  BitVector moved = bitsOf({0});
  moved.Permute(map({9}));
  EXPECT_THAT(setBits(moved), ElementsAre(9));
}

// ---------------------------------------------------------------------------------------------

TEST(IOroRandomPlaces, AreFourAndFive) {
  EXPECT_EQ(tests::slotNumber(&IOroRandom::next), 4);
  EXPECT_EQ(tests::slotNumber(&IOroRandom::seed), 5);
}

TEST_F(BitMaps, KeepRandomDrawsOnceForEachSetBit) {
  const IPtr<FakeRandom> random = new FakeRandom;
  random->answers = {4, 1, 2, 0, 0};
  BitVector bits = bitsOf({3, 10, 20, 30, 90}, 100);
  bits.KeepRandom(0.4, random.get());
  EXPECT_THAT(random->asked, ElementsAre(5, 4, 3, 2, 1)) << "even when nothing more is wanted";
  EXPECT_THAT(random->seeds, IsEmpty());
  EXPECT_THAT(setBits(bits), ElementsAre(10, 30)) << "where it was below what is wanted";
  EXPECT_EQ(bits.KnownCount(), 2);
}

TEST_F(BitMaps, KeepRandomLeavesASourceThatBelongsToNobody) {
  bool isGone = false;
  struct LooseRandom : FakeRandom {
    explicit LooseRandom(bool& gone) : isGone(gone) {}
    ~LooseRandom() override { isGone = true; }
    bool& isGone;
  };
  auto* const random = new LooseRandom(isGone);
  BitVector bits = bitsOf({3, 10, 20}, 100);
  bits.KeepRandom(0.4, random);
  ASSERT_FALSE(isGone);
  EXPECT_THAT(random->asked, ElementsAre(3, 2, 1));
  IPtr<IOroRandom> owner = random;
  owner = nullptr;
  EXPECT_TRUE(isGone);
}

TEST_F(BitMaps, KeepRandomKeepsExactlyWhatTheFractionSays) {
  struct Row {
    double fraction;
    int32_t kept;
  };
  for (const Row& row : {Row{0.5, 5}, Row{0.0, 0}, Row{1.0, 10}, Row{0.25, 3}, Row{0.24, 2},
                         Row{7.0, 10}, Row{-3.0, 0}, Row{std::nan(""), 0}}) {
    BitVector bits(20);
    bits.SetAll(10);
    bits.KeepRandom(row.fraction, nullptr);
    EXPECT_EQ(bits.KnownCount(), row.kept) << row.fraction;
    EXPECT_EQ(bits.Recount(), row.kept) << row.fraction;
  }
}

TEST_F(BitMaps, KeepRandomSeedsTheServiceWithTheCount) {
  const IPtr<FakeRandom> random = new FakeRandom;
  memory_.broker.registerService(KelCString::borrow("IOroRandom"), random.get());
  BitVector bits(100);
  bits.SetAll(50);
  bits.KeepRandom(0.5, nullptr);
  EXPECT_THAT(random->seeds, ElementsAre(512U));
  EXPECT_EQ(random->asked.size(), 50U);
  const IPtr<FakeRandom> own = new FakeRandom;
  const int requests = memory_.broker.serviceRequests;
  bits.KeepRandom(0.5, own.get());
  EXPECT_EQ(memory_.broker.serviceRequests, requests);
}

TEST_F(BitMaps, KeepRandomThinsEqualSetsEqually) {
  BitVector first(100000);
  first.SetAll(90000);
  BitVector second = first;
  first.KeepRandom(0.1, nullptr);
  second.KeepRandom(0.1, nullptr);
  EXPECT_TRUE(first == second);
  EXPECT_EQ(first.CountSet(), 9000);
  // Spread over the whole range: each tenth holds about a tenth.
  for (int32_t part = 0; part < 10; ++part) {
    const int32_t inPart = first.CountAfter(part * 9000) - first.CountAfter((part + 1) * 9000);
    EXPECT_NEAR(inPart, 900, 150) << part;
  }
}

TEST_F(BitMaps, KeepRandomGivesEveryBitItsChance) {
  // Of ten bits two are kept, a thousand times with other seeds: each should be in about 200.
  std::vector<int32_t> kept(11);
  for (int32_t round = 0; round < 1000; ++round) {
    BitVector bits(20);
    bits.SetAll(10);
    bits.SetRange(21, 21 + round % 7);  // another count, another seed
    std::mt19937 random(static_cast<uint32_t>(round));
    struct Source : FakeRandom {
      int32_t next(int32_t n) override {
        return static_cast<int32_t>((*from)() % static_cast<uint32_t>(n));
      }
      std::mt19937* from = nullptr;
    };
    const IPtr<Source> source = new Source;
    source->from = &random;
    bits.ClearRange(11, 31);
    bits.KeepRandom(0.2, source.get());
    for (const int32_t b : setBits(bits)) ++kept[static_cast<size_t>(b)];
  }
  EXPECT_EQ(std::accumulate(kept.begin(), kept.end(), 0), 2000);
  for (size_t b = 1; b <= 10; ++b) EXPECT_NEAR(kept[b], 200, 50) << b;
}

TEST_F(BitMaps, KeepEvenlyStartsWithHalfTheCount) {
  BitVector bits(20);
  bits.SetAll(10);
  bits.KeepEvenly(3);
  // 5 + 3, 11 - 10, 4, 7, 10 - 10, 3, 6, 9, 12 - 10, 5
  EXPECT_THAT(setBits(bits), ElementsAre(2, 5, 9));
  EXPECT_EQ(bits.KnownCount(), 3);
}

TEST_F(BitMaps, KeepEvenlyKeepsAsManyAsAsked) {
  for (const int32_t n : {1, 2, 7, 50, 99, 100, 1000}) {
    BitVector bits(300);
    for (int32_t b = 2; b <= 200; b += 2) bits.Set(b);
    bits.KeepEvenly(n);
    EXPECT_EQ(bits.KnownCount(), std::min(n, 100));
    EXPECT_EQ(bits.Recount(), std::min(n, 100));
  }
  BitVector bits(300);
  bits.SetAll(200);
  bits.KeepEvenly(0);
  EXPECT_EQ(bits.KnownCount(), 0);
  bits.SetAll(200);
  bits.KeepEvenly(-5);
  EXPECT_EQ(bits.KnownCount(), 0);
  BitVector untouched = bitsOf({1, 2}, 40);
  untouched.Not();
  untouched.Not();
  untouched.KeepEvenly(5);
  EXPECT_EQ(untouched.KnownCount(), 2) << "it was counted";
}

}  // namespace
