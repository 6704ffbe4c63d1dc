#include "orobasictypes/quicksort.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/quicksorter.h"
#include "tests/orobasictypes/numeric/listof.h"
#include "tests/support/countingmanager.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

using OroMM::IntArray;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pair;

using Calls = std::vector<std::pair<int32_t, int32_t>>;

// Compares keys, which are the values themselves when there are none, and tells each call.
class Recorder : public QuickSort_Compare {
 public:
  explicit Recorder(std::vector<int32_t> keys = {}) : keys_(std::move(keys)) {}

  int32_t Compare(int32_t a, int32_t b) override {
    calls.emplace_back(a, b);
    const int32_t first = keys_.empty() ? a : keys_[static_cast<size_t>(a)];
    const int32_t second = keys_.empty() ? b : keys_[static_cast<size_t>(b)];
    return first < second ? -7 : first > second ? 7 : 0;
  }
  static int32_t call(int32_t a, int32_t b, void* recorder) {
    return static_cast<Recorder*>(recorder)->Compare(a, b);
  }

  Calls calls;

 private:
  std::vector<int32_t> keys_;
};

// The same steps as simply as they can be written.
class PlainSort {
 public:
  PlainSort(std::vector<int32_t>& values, Recorder& compare) : a(values), compare_(compare) {}

  void sort(int first, int last) {
    if (last - first < 5) return exchange(first, last);
    std::vector<std::pair<int, int>> stack = {{first, last}};
    while (!stack.empty()) {
      const auto [left, right] = stack.back();
      stack.pop_back();
      const int middle = split(left, right);
      for (const auto& [from, to] : {std::pair(left, middle - 1), std::pair(middle + 1, right)}) {
        if (to - from > 4) {
          stack.emplace_back(from, to);
        } else {
          exchange(from, to);
        }
      }
    }
  }

 private:
  int cmp(int32_t x, int32_t y) { return compare_.Compare(x, y); }
  int32_t& at(int i) { return a[static_cast<size_t>(i)]; }

  void exchange(int left, int right) {
    for (int i = left; i < right; ++i) {
      for (int j = i + 1; j <= right; ++j) {
        if (cmp(at(i), at(j)) > 0) std::swap(at(i), at(j));
      }
    }
  }

  int split(int left, int right) {
    const int mid = (left + right) / 2;
    int32_t lo = at(left);
    int32_t hi = at(right);
    const int32_t m = at(mid);
    const int32_t s = at(left + 1);
    if (cmp(lo, hi) > 0) {
      std::swap(lo, hi);
      at(left) = lo;
      at(right) = hi;
    }
    int32_t pivot = m;
    if (cmp(hi, m) < 0) {
      pivot = hi;
      at(right) = m;
    } else if (cmp(m, lo) < 0) {
      pivot = lo;
      at(left) = m;
    }
    at(left + 1) = pivot;
    at(mid) = s;
    int l = left + 1;
    int r = right;
    while (true) {
      --r;
      while (cmp(at(r), pivot) > 0) --r;
      ++l;
      while (l < r && cmp(at(l), pivot) < 0) ++l;
      if (l >= r) break;
      std::swap(at(l), at(r));
    }
    if (left + 1 != r) at(left + 1) = at(r);
    at(r) = pivot;
    return r;
  }

  std::vector<int32_t>& a;
  Recorder& compare_;
};

std::vector<int32_t> contents(const IntArray& index, int32_t first, int32_t last) {
  std::vector<int32_t> values;
  for (int32_t i = first; i <= last; ++i) values.push_back(index.Get(i));
  return values;
}

class QuickSort : public testing::Test {
 protected:
  static void fill(IntArray& index, int32_t first, const std::vector<int32_t>& values) {
    for (size_t i = 0; i < values.size(); ++i) {
      index.Set(first + static_cast<int32_t>(i), values[i]);
    }
  }

  tests::ManagedMemory memory_;
};

TEST_F(QuickSort, ComparisonStandsBehindTheDestructor) {
  EXPECT_EQ(tests::slotNumber(&QuickSort_Compare::Compare), 3) << "a destructor takes two places";
}

TEST_F(QuickSort, OfFewerThanTwoElementsIsFalseAndComparesNothing) {
  int32_t index[] = {3, 2, 1};
  Recorder compare;
  EXPECT_FALSE(quickSort(index, 1, 1, Recorder::call, &compare));
  EXPECT_FALSE(quickSort(index, 2, 1, Recorder::call, &compare));
  IntArray array(3);
  EXPECT_FALSE(quickSort(array, 1, 1, compare));
  EXPECT_FALSE(quickSort(array, 5, -5, Recorder::call, &compare));
  EXPECT_THAT(compare.calls, IsEmpty());
  EXPECT_THAT(index, ElementsAre(3, 2, 1));
}

TEST_F(QuickSort, ExchangesFiveElements) {
  int32_t index[] = {0, 5, 3, 4, 1, 2, 0};
  Recorder compare;
  EXPECT_TRUE(quickSort(index, 1, 5, Recorder::call, &compare));
  EXPECT_THAT(index, ElementsAre(0, 1, 2, 3, 4, 5, 0));
  EXPECT_THAT(compare.calls, ElementsAre(Pair(5, 3), Pair(3, 4), Pair(3, 1), Pair(1, 2),  //
                                         Pair(5, 4), Pair(4, 3), Pair(3, 2),              //
                                         Pair(5, 4), Pair(4, 3), Pair(5, 4)));
}

TEST_F(QuickSort, PartitionsSixElements) {
  int32_t index[] = {5, 3, 8, 1, 9, 2};
  Recorder compare;
  EXPECT_TRUE(quickSort(index, 0, 5, Recorder::call, &compare));
  EXPECT_THAT(index, ElementsAre(1, 2, 3, 5, 8, 9));
  EXPECT_THAT(compare.calls, ElementsAre(Pair(5, 2), Pair(5, 8),  // the median, which is 5
                                         Pair(9, 5), Pair(1, 5), Pair(3, 5),  // the partition
                                         Pair(2, 1), Pair(1, 3), Pair(2, 3),  // its left part
                                         Pair(9, 8)));                        // its right part
}

TEST_F(QuickSort, StopsAtEqualElements) {
  for (const int32_t count : {6, 7, 100, 5000}) {
    std::vector<int32_t> index(static_cast<size_t>(count), 4);
    Recorder compare;
    EXPECT_TRUE(quickSort(index.data(), 0, count - 1, Recorder::call, &compare));
    EXPECT_THAT(index, testing::Each(4));
    EXPECT_LT(compare.calls.size(), static_cast<size_t>(count) * 20);
  }
}

// Many shapes of input, in all forms, against the plain steps.
TEST_F(QuickSort, MakesTheSameComparisonsInEveryForm) {
  std::mt19937 random(9);
  for (int round = 0; round < 1500; ++round) {
    const auto count = static_cast<int32_t>(round < 400 ? round % 20 + 2 : random() % 400 + 2);
    const uint32_t kinds = random() % 3 == 0 ? 3 : 1000;
    std::vector<int32_t> keys(static_cast<size_t>(count));
    for (int32_t& key : keys) key = static_cast<int32_t>(random() % kinds);
    if (round % 5 == 1) std::sort(keys.begin(), keys.end());
    if (round % 5 == 2) std::sort(keys.rbegin(), keys.rend());
    std::vector<int32_t> start(keys.size());
    std::iota(start.begin(), start.end(), 0);

    Recorder expected(keys);
    std::vector<int32_t> sorted = start;
    PlainSort(sorted, expected).sort(0, count - 1);

    Recorder plain(keys);
    std::vector<int32_t> flat = start;
    ASSERT_TRUE(quickSort(flat.data(), 0, count - 1, Recorder::call, &plain));
    ASSERT_EQ(flat, sorted);
    ASSERT_EQ(plain.calls, expected.calls);

    const int32_t first = 2040;  // the range lies in two blocks
    for (int form = 0; form < 4; ++form) {
      IntArray index(3000);
      fill(index, first, start);
      Recorder compare(keys);
      OroIntList stack;
      const int32_t last = first + count - 1;
      ASSERT_TRUE(form == 0   ? quickSort(index, first, last, compare)
                  : form == 1 ? quickSort(index, first, last, Recorder::call, &compare)
                  : form == 2 ? quickSort(index, first, last, compare, stack)
                              : quickSort(index, first, last, Recorder::call, &compare, stack));
      ASSERT_EQ(contents(index, first, first + count - 1), sorted);
      ASSERT_EQ(compare.calls, expected.calls);
    }
  }
}

TEST_F(QuickSort, ComparesBelowIndexZeroAsAbove) {
  std::vector<int32_t> start(14);
  std::iota(start.begin(), start.end(), 1);
  std::shuffle(start.begin(), start.end(), std::mt19937(4));
  Recorder expected;
  std::vector<int32_t> above = start;
  quickSort(above.data(), 0, 13, Recorder::call, &expected);
  Recorder compare;
  std::vector<int32_t> below = start;
  EXPECT_TRUE(quickSort(below.data() + 7, -7, 6, Recorder::call, &compare));
  EXPECT_EQ(below, above);
  EXPECT_EQ(compare.calls, expected.calls);
}

TEST_F(QuickSort, SortsWhereNoFlatCopyFits) {
  std::vector<int32_t> start(5000);
  std::iota(start.begin(), start.end(), 1);
  std::shuffle(start.begin(), start.end(), std::mt19937(3));
  Recorder expected;
  std::vector<int32_t> sorted = start;
  PlainSort(sorted, expected).sort(0, 4999);
  IntArray index(5000);
  fill(index, 0, start);
  tests::FakeHeap heap;
  heap.refuseAbove = 10000;
  Recorder compare;
  EXPECT_TRUE(quickSort(index, 0, 4999, compare));
  EXPECT_EQ(contents(index, 0, 4999), sorted);
  EXPECT_EQ(compare.calls, expected.calls);
}

TEST_F(QuickSort, ReadsZeroBeyondTheSizeAndGrowsWhereItWrites) {
  IntArray index(1);  // 2048 elements
  for (int32_t i = 0; i < 2048; ++i) index.Set(i, i + 1);
  Recorder compare;
  EXPECT_TRUE(quickSort(index, 2040, 2055, compare));
  EXPECT_EQ(index.Size(), 4096);
  EXPECT_THAT(contents(index, 2039, 2056), ElementsAre(2040, 0, 0, 0, 0, 0, 0, 0, 0, 2041, 2042,
                                                       2043, 2044, 2045, 2046, 2047, 2048, 0));
  IntArray inOrder(1);
  for (int32_t i = 0; i < 2048; ++i) inOrder.Set(i, i - 3000);
  EXPECT_TRUE(quickSort(inOrder, 2046, 2049, compare));
  EXPECT_EQ(inOrder.Size(), 4096) << "writing what stands there grows it too";
  EXPECT_EQ(inOrder.Block(1), nullptr);
  IntArray larger(3 * 2048);
  larger.Set(3 * 2048 - 1, 5);
  EXPECT_TRUE(quickSort(larger, 3 * 2048 - 1, 3 * 2048, compare));
  EXPECT_EQ(larger.Size(), 6 * 2048) << "it grows as large arrays do";
}

TEST_F(QuickSort, TakesABlockOnlyForWhatIsNotZero) {
  IntArray index(4096);
  index.Set(3000, -1);
  Recorder compare;
  quickSort(index, 2048, 4095, compare);
  EXPECT_EQ(index.Get(2048), -1);
  EXPECT_EQ(index.Block(0), nullptr);
  EXPECT_EQ(memory_.manager->allocations, 1);
}

TEST_F(QuickSort, LeavesTheCallersStackAsItWas) {
  OroIntList stack;
  stack.Add(77);
  std::vector<int32_t> index(1000);
  std::iota(index.rbegin(), index.rend(), 0);
  Recorder compare;
  for (int again = 0; again < 2; ++again) {
    std::reverse(index.begin(), index.end());
    EXPECT_TRUE(quickSort(index.data(), 0, 999, Recorder::call, &compare, stack));
    EXPECT_THAT(tests::listOf(stack), ElementsAre(77));
    EXPECT_TRUE(std::is_sorted(index.begin(), index.end()));
  }
}

TEST_F(QuickSort, TakesItsStackFromThePoolOnce) {
  std::vector<int32_t> index(1000);
  Recorder compare;
  quickSort(index.data(), 0, 999, Recorder::call, &compare);
  tests::FakeHeap heap;
  quickSort(index.data(), 0, 999, Recorder::call, &compare);
  EXPECT_THAT(heap.sizes, IsEmpty());
}

// Each comparison of `depth` sorts six more.
int32_t sortDeeper(int32_t a, int32_t b, void* depth) {
  int left = *static_cast<int*>(depth);
  if (--left > 0) {
    int32_t inner[] = {1, 2, 3, 4, 5, 6};
    const QuickSortFunction compare = left == 1 ? Recorder::call : sortDeeper;
    Recorder last;
    quickSort(inner, 0, 5, compare, left == 1 ? static_cast<void*>(&last) : &left);
  }
  return a - b;
}

TEST_F(QuickSort, MakesStacksWithFortyPlacesWhenThePoolHasNone) {
  int depth = 5;  // sorts that are open at once
  int32_t index[] = {1, 2, 3, 4, 5, 6};
  tests::FakeHeap heap;
  quickSort(index, 0, 5, sortDeeper, &depth);
  for (const size_t bytes : heap.sizes) {
    EXPECT_THAT(bytes, testing::AnyOf(41 * sizeof(int32_t),  // a stack; the rest is the pool's room
                                      3 * sizeof(void*), 6 * sizeof(void*)));
  }
}

TEST_F(QuickSort, MayBeUsedWithinAComparison) {
  struct Nested : QuickSort_Compare {
    int32_t Compare(int32_t a, int32_t b) override {
      int32_t inner[] = {6, 5, 4, 3, 2, 1, 0};
      Recorder compare;
      quickSort(inner, 0, 6, Recorder::call, &compare);
      EXPECT_TRUE(std::is_sorted(inner, inner + 7));
      return a - b;
    }
  } compare;
  IntArray index(100);
  for (int32_t i = 0; i < 100; ++i) index.Set(i, 99 - i);
  quickSort(index, 0, 99, compare);
  for (int32_t i = 0; i < 100; ++i) ASSERT_EQ(index.Get(i), i);
}

TEST_F(QuickSort, StaysInItsRangeWhenTheComparisonLies) {
  for (const int32_t answer : {-1, 1}) {
    struct Liar : QuickSort_Compare {
      int32_t Compare(int32_t, int32_t) override { return answer; }
      int32_t answer = 0;
    } compare;
    compare.answer = answer;
    std::vector<int32_t> index(100);
    std::iota(index.begin(), index.end(), 0);
    const auto call = [](int32_t a, int32_t b, void* liar) {
      return static_cast<Liar*>(liar)->Compare(a, b);
    };
    quickSort(index.data(), 1, 98, call, &compare);
    EXPECT_EQ(index.front(), 0);
    EXPECT_EQ(index.back(), 99);
    std::sort(index.begin(), index.end());
    for (int32_t i = 0; i < 100; ++i) ASSERT_EQ(index[static_cast<size_t>(i)], i) << "none is lost";
  }
}

TEST_F(QuickSort, SortsAMillion) {
  std::vector<int32_t> keys(1000000);
  std::iota(keys.begin(), keys.end(), 0);
  std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
  struct ByKey : QuickSort_Compare {
    explicit ByKey(const std::vector<int32_t>& keys) : keys(keys) {}
    int32_t Compare(int32_t a, int32_t b) override {
      return keys[static_cast<size_t>(a)] - keys[static_cast<size_t>(b)];
    }
    const std::vector<int32_t>& keys;
  } compare(keys);
  IntArray index(1000000);
  for (int32_t i = 0; i < 1000000; ++i) index.Set(i, i);
  quickSort(index, 0, 999999, compare);
  for (int32_t i = 0; i < 1000000; ++i) ASSERT_EQ(keys[static_cast<size_t>(index.Get(i))], i);
}

TEST(QuickSorter, SortsRecordsThatCarryTheirKey) {
  struct Record {
    double key;
    int32_t number;
  };
  std::vector<Record> records;
  std::mt19937 random(2);
  for (int32_t i = 0; i < 10000; ++i) records.push_back({static_cast<double>(random()), i});
  auto compare = [](const Record& a, const Record& b) {
    return a.key < b.key ? -1 : a.key > b.key ? 1 : 0;
  };
  OroIntList stack;
  flatQuickSorter(records.data(), compare, stack).sort(0, 9999);
  for (size_t i = 1; i < records.size(); ++i) ASSERT_LE(records[i - 1].key, records[i].key);
}

}  // namespace
