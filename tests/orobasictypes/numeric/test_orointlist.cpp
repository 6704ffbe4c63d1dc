#include "orobasictypes/orointlist.h"

#include <cstring>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/orobasictypes/numeric/listof.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using tests::listOf;

TEST(OroIntList, HasItsFieldsInOrder) {
  static_assert(sizeof(OroIntList) == 24);
  OroIntList list(41);
  list.Add(7);
  const char* const bytes = reinterpret_cast<const char*>(&list);
  int32_t capacity = 0;
  const int32_t* elements = nullptr;
  int32_t count = 0;
  std::memcpy(&capacity, bytes, sizeof capacity);
  std::memcpy(&elements, bytes + 8, sizeof elements);
  std::memcpy(&count, bytes + 16, sizeof count);
  EXPECT_EQ(capacity, 41);
  EXPECT_EQ(elements[1], 7) << "slot 0 is unused";
  EXPECT_EQ(count, 1);
}

TEST(OroIntList, StartsEmptyWithTheRoomItWasGiven) {
  const OroIntList none;
  EXPECT_EQ(none.Count(), 0);
  EXPECT_EQ(none.Capacity(), 0);
  EXPECT_THAT(listOf(none), IsEmpty());
  EXPECT_EQ(OroIntList(11).Capacity(), 11);
}

TEST(OroIntList, CountsFromOne) {
  OroIntList list;
  list.Add(5);
  list.Add(-6);
  EXPECT_EQ(list.Get(1), 5);
  EXPECT_EQ(list.Get(2), -6);
  list.Set(1, 8);
  EXPECT_THAT(listOf(list), ElementsAre(8, -6));
}

TEST(OroIntList, FillsItsSlotsBeforeItGrows) {
  OroIntList list(4);
  for (int32_t i = 1; i <= 3; ++i) list.Add(i);
  EXPECT_EQ(list.Capacity(), 4);
  list.Add(4);
  EXPECT_EQ(list.Capacity(), 8);
  EXPECT_THAT(listOf(list), ElementsAre(1, 2, 3, 4));
}

TEST(OroIntList, GivesTheLastOneBackFirst) {
  OroIntList list;
  list.Add(1);
  list.Add(2);
  EXPECT_EQ(list.Take(), 2);
  EXPECT_EQ(list.Take(), 1);
  EXPECT_EQ(list.Count(), 0);
  list.Add(3);
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_GT(list.Capacity(), 0) << "its room stays";
}

TEST(OroIntList, BehavesLikeAPlainVector) {
  std::mt19937 random(4);
  OroIntList list;
  std::vector<int32_t> model;
  for (int step = 0; step < 1000000; ++step) {
    const uint32_t choice = random() % 1000;
    if (choice == 0) {
      list.Clear();
      model.clear();
    } else if (choice < 600 || model.empty()) {
      model.push_back(static_cast<int32_t>(random()));
      list.Add(model.back());
    } else if (choice < 700) {
      const size_t i = random() % model.size();
      list.Set(static_cast<int32_t>(i) + 1, model[i] = step);
    } else {
      ASSERT_EQ(list.Take(), model.back());
      model.pop_back();
    }
    ASSERT_EQ(list.Count(), static_cast<int32_t>(model.size()));
  }
  EXPECT_THAT(listOf(list), ElementsAreArray(model));
}

}  // namespace
