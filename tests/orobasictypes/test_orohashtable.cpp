#include "orobasictypes/orohashtable.h"

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelhash.h"
#include "orobasictypes/orostring.h"
#include "tests/support/fakeheap.h"

namespace {

// A key whose hash the test chooses; `label` tells equal keys apart by what they do not compare.
struct Number {
  uint32_t value = 0;
  uint32_t hash() const { return value; }
  bool operator==(const Number&) const = default;
};

using NumberTable = OroHashTable<Number, int>;
static_assert(!std::is_copy_constructible_v<NumberTable>);
static_assert(!std::is_copy_assignable_v<NumberTable>);

std::vector<int> values(const NumberTable& table) {
  std::vector<int> all;
  for (const auto& entry : table) all.push_back(entry.value);
  return all;
}
using Values = std::vector<int>;

TEST(OroNextPrime, IsStrictlyGreater) {
  struct Row {
    uint32_t count, prime;
  };
  for (const Row& row : {Row{0, 2},
                         {1, 2},
                         {2, 3},
                         {3, 5},
                         {6, 11},
                         {7, 11},
                         {11, 17},
                         {16, 17},
                         {17, 37},
                         {19, 37},
                         {99, 131},
                         {199, 257},
                         {299, 521},
                         {536870922, 536870923},
                         {536870923, 1073741827},
                         {1073741826, 1073741827},
                         {1073741827, 2147483659},
                         {2147483658, 2147483659},
                         {2147483659, 2147483659},
                         {4294967295, 2147483659}}) {
    EXPECT_EQ(oroNextPrime(row.count), row.prime) << row.count;
  }
}

TEST(OroNextPrime, WholeTableInOrder) {
  const uint32_t sizes[] = {
      2,        3,        5,        11,        17,        37,        67,         131,
      257,      521,      1031,     2053,      4099,      8209,      16411,      32771,
      65537,    131101,   262147,   524309,    1048583,   2097169,   4194319,    8388617,
      16777259, 33554467, 67108879, 134217757, 268435459, 536870923, 1073741827, 2147483659};
  uint32_t prime = 0;
  for (const uint32_t size : sizes) {
    prime = oroNextPrime(prime);
    EXPECT_EQ(prime, size);
  }
}

TEST(OroHashTable, BucketCountComesFromThePrimeTable) {
  EXPECT_EQ(NumberTable(6).bucketCount(), 11u);
  EXPECT_EQ(NumberTable(2).bucketCount(), 3u);
  EXPECT_EQ(NumberTable(17).bucketCount(), 37u);
  EXPECT_EQ(NumberTable::withBuckets(17).bucketCount(), 17u);
  EXPECT_EQ(NumberTable::withBuckets(99).bucketCount(), 131u);
  EXPECT_EQ(NumberTable::withBuckets(0).bucketCount(), 2u);
  EXPECT_EQ(NumberTable::withBuckets(2).bucketCount(), 2u);
}

TEST(OroHashTable, NothingIsAllocatedBeforeTheFirstInsertion) {
  tests::FakeHeap heap;
  NumberTable table(6);
  uint32_t index = 99;
  EXPECT_EQ(table.find({13}, &index), nullptr);
  EXPECT_EQ(index, 2u);
  EXPECT_FALSE(table.remove({13}));
  EXPECT_TRUE(table.begin() == table.end());
  EXPECT_FALSE(table.hasBuckets());
  EXPECT_EQ(heap.allocations, 0);
}

TEST(OroHashTable, ArrayCanBeMadeAtOnce) {
  tests::FakeHeap heap;
  const NumberTable table(6, true);
  EXPECT_TRUE(table.hasBuckets());
  EXPECT_EQ(heap.sizes, std::vector<size_t>{11 * sizeof(void*)});
  EXPECT_EQ(table.find({3}), nullptr);
}

TEST(OroHashTable, BucketIsTheRemainderOfTheHash) {
  std::mt19937 random(7);
  for (uint32_t count = 0; count < 2147483659u; count = oroNextPrime(count)) {
    const NumberTable table(count);
    const uint32_t buckets = table.bucketCount();
    for (const uint32_t hash : {0u, 1u, buckets - 1, buckets, buckets + 1, 0x7FFFFFFFu, 0x80000000u,
                                0xFFFFFFFEu, 0xFFFFFFFFu}) {
      ASSERT_EQ(table.reduce(hash), hash % buckets) << hash << " of " << buckets;
    }
    for (int i = 0; i < 2000; ++i) {
      const auto hash = static_cast<uint32_t>(random());
      ASSERT_EQ(table.reduce(hash), hash % buckets) << hash << " of " << buckets;
    }
  }
}

TEST(OroHashTable, FindsWhatWasInserted) {
  NumberTable table(6);
  uint32_t index = 0;
  ASSERT_EQ(table.find({14}, &index), nullptr);
  EXPECT_EQ(index, 3u);
  auto* const entry = table.insert(index, {14}, 140);
  EXPECT_EQ(table.find({14}), entry);
  EXPECT_EQ(entry->value, 140);
  EXPECT_EQ(entry->bucket, 3u);
  EXPECT_EQ(table.find({3}), nullptr) << "same bucket, another key";
  EXPECT_EQ(table.entryCount(), 1u);
}

TEST(OroHashTable, EntryHoldsBucketKeyValueNextInThisOrder) {
  NumberTable table(6);
  const NumberTable::Entry& entry = *table.insert({1}, 10);
  const void* const fields[] = {&entry, &entry.bucket, &entry.key, &entry.value, &entry.next};
  EXPECT_EQ(fields[0], fields[1]);
  EXPECT_LT(fields[1], fields[2]);
  EXPECT_LT(fields[2], fields[3]);
  EXPECT_LT(fields[3], fields[4]);
  EXPECT_EQ(entry.next, nullptr);
  EXPECT_EQ(table.insert({12}, 120)->next, &entry);
}

TEST(OroHashTable, LaterEntryHidesAnEarlierOneOfTheSameKey) {
  NumberTable table(6);
  table.insert({5}, 1);
  table.insert({5}, 2);
  EXPECT_EQ(table.entryCount(), 2u);
  EXPECT_EQ(table.find({5})->value, 2);
  EXPECT_TRUE(table.remove({5}));
  EXPECT_EQ(table.find({5})->value, 1);
  EXPECT_TRUE(table.remove({5}));
  EXPECT_FALSE(table.remove({5}));
}

TEST(OroHashTable, GrowsAtFourFifths) {
  NumberTable table(6);
  for (uint32_t i = 0; i < 8; ++i) table.insert({i}, 0);
  EXPECT_EQ(table.bucketCount(), 11u);
  table.insert({8}, 0);
  EXPECT_EQ(table.bucketCount(), 17u);
  EXPECT_EQ(table.entryCount(), 9u);

  NumberTable exact(4);
  ASSERT_EQ(exact.bucketCount(), 5u);
  for (uint32_t i = 0; i < 3; ++i) exact.insert({i}, 0);
  EXPECT_EQ(exact.bucketCount(), 5u);
  exact.insert({3}, 0);
  EXPECT_EQ(exact.bucketCount(), 11u) << "4 is at least 5 times 0.8";
}

TEST(OroHashTable, EntriesAreFoundUnderTheirNewIndexAfterGrowth) {
  NumberTable table(2);
  for (uint32_t i = 0; i < 1000; ++i) {
    table.insert({i * 7919}, static_cast<int>(i));
    if (i % 100 != 99) continue;
    for (uint32_t j = 0; j <= i; ++j) {
      uint32_t index = 0;
      const auto* const entry = table.find({j * 7919}, &index);
      ASSERT_NE(entry, nullptr);
      ASSERT_EQ(entry->value, static_cast<int>(j));
      ASSERT_EQ(entry->bucket, index);
      ASSERT_EQ(index, j * 7919 % table.bucketCount());
    }
  }
  EXPECT_EQ(table.bucketCount(), 2053u);
}

TEST(OroHashTable, WalkGoesByBucketsNewestFirst) {
  NumberTable table(6);
  table.insert({4}, 1);
  table.insert({15}, 2);
  table.insert({0}, 3);
  table.insert({26}, 4);
  table.insert({10}, 5);
  EXPECT_EQ(values(table), (Values{3, 4, 2, 1, 5}));
  NumberTable::Iterator walk = table.begin();
  walk->value = 30;
  EXPECT_EQ(table.find({0})->value, 30);
}

TEST(OroHashTable, GrowthReversesChains) {
  NumberTable table(6);
  // 187 is 11 times 17: all of these share a bucket before and after the growth.
  for (int i = 1; i <= 8; ++i) table.insert({static_cast<uint32_t>(i) * 187 + 1}, i);
  EXPECT_EQ(values(table), (Values{8, 7, 6, 5, 4, 3, 2, 1}));
  table.insert({9 * 187 + 1}, 9);
  ASSERT_EQ(table.bucketCount(), 17u);
  EXPECT_EQ(values(table), (Values{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(OroHashTable, GrowthTakesTheOldBucketsUpward) {
  NumberTable table(6);
  // In 11 buckets these lie in buckets 1 to 8 in this order; in 17 buckets all lie in bucket 0.
  const uint32_t multiples[] = {34, 68, 102, 136, 170, 17, 51, 85};
  for (const uint32_t key : multiples) table.insert({key}, static_cast<int>(key));
  table.insert({119}, 119);
  ASSERT_EQ(table.bucketCount(), 17u);
  Values expected;
  for (uint32_t bucket = 11; bucket-- > 0;) {
    for (const uint32_t key : {34, 68, 102, 136, 170, 17, 51, 85, 119}) {
      if (key % 11 == bucket) expected.push_back(static_cast<int>(key));
    }
  }
  EXPECT_EQ(values(table), expected);
}

TEST(OroHashTable, OlderDuplicateComesBackToTheFrontAfterGrowth) {
  NumberTable table(6);
  table.insert({1}, 1);
  table.insert({1}, 2);
  for (uint32_t i = 2; i < 8; ++i) table.insert({i}, 0);
  EXPECT_EQ(table.find({1})->value, 2);
  table.insert({8}, 0);
  EXPECT_EQ(table.find({1})->value, 1);
}

TEST(OroHashTable, RemovalTakesTheFirstOfAChainAndShrinksNothing) {
  NumberTable table(6);
  for (uint32_t i = 0; i < 20; ++i) table.insert({i}, static_cast<int>(i));
  const uint32_t buckets = table.bucketCount();
  for (uint32_t i = 0; i < 20; i += 2) EXPECT_TRUE(table.remove({i}));
  EXPECT_EQ(table.bucketCount(), buckets);
  EXPECT_EQ(table.entryCount(), 10u);
  for (uint32_t i = 0; i < 20; ++i) EXPECT_EQ(table.find({i}) != nullptr, i % 2 == 1) << i;
}

TEST(OroHashTable, ClearKeepsTheBucketCountAndFreesTheArray) {
  tests::FakeHeap heap;
  NumberTable table(6);
  for (uint32_t i = 0; i < 9; ++i) table.insert({i}, 0);
  table.clear();
  EXPECT_EQ(heap.frees, heap.allocations);
  EXPECT_EQ(table.bucketCount(), 17u);
  EXPECT_EQ(table.entryCount(), 0u);
  EXPECT_TRUE(table.isEmpty());
  EXPECT_FALSE(table.hasBuckets());
  EXPECT_EQ(table.find({1}), nullptr);
  table.insert({1}, 5);
  EXPECT_EQ(values(table), Values{5});
}

TEST(OroHashTable, EntriesAreDestroyed) {
  const auto token = std::make_shared<int>(1);
  {
    OroHashTable<Number, std::shared_ptr<int>> table(2);
    for (uint32_t i = 0; i < 50; ++i) table.insert({i}, token);
    EXPECT_EQ(token.use_count(), 51);
    table.remove({7});
    EXPECT_EQ(token.use_count(), 50);
    table.clear();
    EXPECT_EQ(token.use_count(), 1);
    table.insert({1}, token);
  }
  EXPECT_EQ(token.use_count(), 1);
}

TEST(OroHashTable, LooksUpWithoutAKeyAtHand) {
  OroHashTable<KelCString, int> table(6);
  table.insert(KelCString::borrow("GUI/CommandLine"), 1);
  const char* const pieces[] = {"GUI", "/", "CommandLine", nullptr};
  uint32_t index = 0;
  const auto same = [](const KelCString& key) {
    return std::strcmp(key.text(), "GUI/CommandLine") == 0;
  };
  tests::FakeHeap heap;
  const auto* const entry = table.findHashed(kelHashList(pieces), same, &index);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->bucket, index);
  EXPECT_EQ(heap.allocations, 0);
  EXPECT_TRUE(table.removeHashed(kelHashList(pieces), same));
  EXPECT_FALSE(table.removeHashed(kelHashList(pieces), same));
}

TEST(OroHashTable, NullAndEmptyNarrowTextAreTwoKeys) {
  OroHashTable<KelCString, int> table(6);
  uint32_t nullIndex = 0;
  uint32_t emptyIndex = 0;
  table.insert(KelCString(), 1);
  EXPECT_EQ(table.find(KelCString::borrow(""), &emptyIndex), nullptr);
  table.insert(emptyIndex, KelCString::borrow(""), 2);
  EXPECT_EQ(table.find(KelCString(), &nullIndex)->value, 1);
  EXPECT_EQ(table.find(KelCString::borrow(""))->value, 2);
  EXPECT_EQ(nullIndex, 0u);
  EXPECT_EQ(emptyIndex, 5381u % 11);
}

TEST(OroHashTable, NarrowTextsAreFiledByTheirHash) {
  OroHashTable<KelCString, int> table(6);
  const auto* const entry = table.insert(KelCString("\xFF"), 1);
  EXPECT_EQ(entry->bucket, 177572u % 11);
  EXPECT_EQ(table.find(KelCString::borrow("\xFF")), entry);
}

TEST(OroHashTable, WideTextsAreFiledByTheSumOfTheirUnits) {
  OroHashTable<OroString, int> table(6);
  const auto* const entry = table.insert(OroString("ab"), 1);
  EXPECT_EQ(entry->bucket, (97u + 98u) % 11);
  EXPECT_EQ(table.find(OroString("ba")), nullptr);
  EXPECT_EQ(table.insert(OroString("ba"), 2)->bucket, entry->bucket);
  EXPECT_EQ(table.find(OroString("ab")), entry);
}

TEST(OroHashTable, IdsAreFiledByTheirFirstWord) {
  OroHashTable<GUID, int> table(6);
  const GUID first{25, 1, 0, {}};
  const GUID second{25, 2, 0, {}};
  EXPECT_EQ(table.insert(first, 1)->bucket, 3u);
  EXPECT_EQ(table.find(second), nullptr);
  EXPECT_EQ(table.insert(second, 2)->bucket, 3u);
  EXPECT_EQ(table.find(first)->value, 1);
}

TEST(OroHashTable, PointersAreFiledByTheirLowHalfAndComparedWhole) {
  auto* const low = reinterpret_cast<char*>(uintptr_t{0x00000000'00000019});
  auto* const high = reinterpret_cast<char*>(uintptr_t{0x00000001'00000019});
  OroHashTable<char*, int> table(6);
  EXPECT_EQ(table.insert(low, 1)->bucket, 3u);
  EXPECT_EQ(table.find(high), nullptr);
  EXPECT_EQ(table.insert(high, 2)->bucket, 3u);
  EXPECT_EQ(table.find(low)->value, 1);
}

TEST(OroHashTable, BehavesAsAMapUnderRandomUse) {
  std::mt19937 random(3);
  NumberTable table(2);
  std::unordered_map<uint32_t, int> model;
  for (int step = 0; step < 100000; ++step) {
    const uint32_t key = random() % 500 * 11;
    switch (random() % 3) {
      case 0: {
        uint32_t index = 0;
        auto* const entry = table.find({key}, &index);
        if (entry != nullptr) {
          entry->value = step;
        } else {
          table.insert(index, {key}, step);
        }
        model[key] = step;
        break;
      }
      case 1:
        ASSERT_EQ(table.remove({key}), model.erase(key) == 1);
        break;
      default: {
        const auto* const entry = table.find({key});
        const auto found = model.find(key);
        ASSERT_EQ(entry != nullptr, found != model.end());
        if (entry != nullptr) {
          ASSERT_EQ(entry->value, found->second);
        }
      }
    }
    ASSERT_EQ(table.entryCount(), model.size());
  }
  size_t walked = 0;
  for (const auto& entry : table) {
    ++walked;
    ASSERT_EQ(model.at(entry.key.value), entry.value);
  }
  EXPECT_EQ(walked, model.size());
}

}  // namespace
