#include "orobasictypes/oroarray.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/hooks.h"
#include "platform/process.h"
#include "tests/support/fakeheap.h"

namespace {

using TextArray = OroArray<std::string>;

std::vector<std::string> items(const TextArray& array) { return {array.begin(), array.end()}; }
using Items = std::vector<std::string>;

TEST(OroArray, EmptyHoldsNothing) {
  tests::FakeHeap heap;
  const TextArray array;
  EXPECT_EQ(array.count(), 0);
  EXPECT_EQ(array.capacity(), 0);
  EXPECT_TRUE(array.isEmpty());
  EXPECT_EQ(array.begin(), array.end());
  EXPECT_EQ(heap.allocations, 0);
}

TEST(OroArray, ItemsCountFromOne) {
  TextArray array;
  EXPECT_EQ(array.add("a"), 1);
  EXPECT_EQ(array.add("b"), 2);
  EXPECT_EQ(array[1], "a");
  EXPECT_EQ(array[2], "b");
  EXPECT_EQ(array[0], "") << "element 0 is no item";
  EXPECT_EQ(array.last(), "b");
  EXPECT_EQ(items(array), (Items{"a", "b"}));
}

TEST(OroArray, TouchingAnElementMakesRoomAndNoItem) {
  TextArray array;
  array[2] = "far";
  EXPECT_EQ(array.capacity(), 4);
  EXPECT_EQ(array.count(), 0);
  EXPECT_EQ(array[4], "") << "the capacity itself is beyond";
  EXPECT_EQ(array.capacity(), 8);
  array.setCount(2);
  EXPECT_EQ(items(array), (Items{"", "far"}));
}

TEST(OroArray, NegativeIndexIsElementZero) {
  TextArray array;
  array[-5] = "zero";
  EXPECT_EQ(array[0], "zero");
  EXPECT_EQ(array.capacity(), 1);
}

TEST(OroArray, GrowsByDoublingFromTheCapacityGiven) {
  OroArray<int32_t> array(3);
  EXPECT_EQ(array.capacity(), 3);
  array[3] = 1;
  EXPECT_EQ(array.capacity(), 6);
  EXPECT_EQ(OroArray<int32_t>(0).capacity(), 0);
  EXPECT_EQ(OroArray<int32_t>(-1).capacity(), 0);
  OroArray<int32_t> exact;
  exact.reserve(21);
  EXPECT_EQ(exact.capacity(), 32);
  for (int32_t i = 1; i <= 40; ++i) exact.add(i);
  EXPECT_EQ(exact.capacity(), 64);
  for (int32_t i = 1; i <= 40; ++i) EXPECT_EQ(exact[i], i);
  EXPECT_EQ(exact[63], 0);
}

TEST(OroArray, IndexesThatNoBlockCanHoldEndAsExhaustion) {
  struct Ended {};
  tests::FakeHeap heap;  // refuses what no heap can give
  const platform::HookGuard guard(
      platform::endProcessHook, +[](int) { throw Ended(); });
  TextArray array;
  for (const int32_t index : {INT32_MAX, INT32_MAX - 1, 1 << 30}) {
    EXPECT_THROW(array[index], Ended) << index;
  }
  EXPECT_EQ(array.capacity(), 0);
  TextArray counted;
  EXPECT_THROW(counted.setCount(INT32_MAX), Ended);
}

TEST(OroArray, CountCanBeSetBackAndForth) {
  TextArray array;
  for (const char* text : {"a", "b", "c"}) array.add(text);
  array.setCount(1);
  EXPECT_EQ(items(array), Items{"a"});
  array.setCount(3);
  EXPECT_EQ(items(array), (Items{"a", "b", "c"}));
  array.setCount(-4);
  EXPECT_EQ(array.count(), 0);
  array.setCount(10);
  EXPECT_EQ(array.last(), "");
}

TEST(OroArray, InsertAndRemoveMoveWhatStandsBehind) {
  TextArray array;
  array.insert(1, "c");
  array.insert(1, "a");
  array.insert(2, "b");
  array.insert(99, "e");
  array.insert(4, "d");
  EXPECT_EQ(items(array), (Items{"a", "b", "c", "d", "e"}));
  array.remove(3);
  array.remove(0);
  array.remove(5);
  EXPECT_EQ(items(array), (Items{"a", "b", "d", "e"}));
  array.pop();
  EXPECT_EQ(items(array), (Items{"a", "b", "d"}));
  array.setCount(4);
  EXPECT_EQ(array.last(), "") << "what was removed is gone";
  TextArray none;
  none.pop();
  EXPECT_EQ(none.count(), 0);
}

TEST(OroArray, AppendingAnOwnItemWorksWhileItGrows) {
  TextArray array;
  array.add("a long text that does not fit into the string object itself");
  for (int i = 0; i < 20; ++i) array.add(array[1]);
  EXPECT_EQ(array[21], array[1]);
}

TEST(OroArray, CopiesAndMoves) {
  TextArray array;
  array.add("a");
  array.add("b");
  array[0] = "zero";
  TextArray copy(array);
  copy[1] = "other";
  EXPECT_EQ(items(array), (Items{"a", "b"}));
  EXPECT_EQ(copy[0], "zero");
  copy = array;
  EXPECT_EQ(items(copy), (Items{"a", "b"}));
  TextArray& same = copy;
  copy = same;
  EXPECT_EQ(items(copy), (Items{"a", "b"}));
  TextArray moved(std::move(copy));
  EXPECT_EQ(items(moved), (Items{"a", "b"}));
  array = std::move(moved);
  EXPECT_EQ(items(array), (Items{"a", "b"}));
}

TEST(OroArray, ElementsAreDestroyed) {
  const auto token = std::make_shared<int>(1);
  tests::FakeHeap heap;
  {
    OroArray<std::shared_ptr<int>> array;
    for (int i = 0; i < 10; ++i) array.add(token);
    EXPECT_EQ(token.use_count(), 11);
    array.remove(2);
    EXPECT_EQ(token.use_count(), 10);
    array.clear();
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(array.capacity(), 0);
    array.add(token);
  }
  EXPECT_EQ(token.use_count(), 1);
  EXPECT_EQ(heap.frees, heap.allocations);
}

}  // namespace
