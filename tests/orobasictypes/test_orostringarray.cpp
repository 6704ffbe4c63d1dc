#include "orobasictypes/orostringarray.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/orobasictypes/texts.h"

namespace {

using tests::borrowed;
using tests::units;

TEST(OroStringArray, FillsFromIndexOne) {
  OroStringArray array;
  EXPECT_EQ(array.lastIndex(), 0);
  EXPECT_EQ(array.capacity(), 0);
  array.append(borrowed(u"one"));
  array.append(borrowed(u"two"));
  EXPECT_EQ(array.lastIndex(), 2);
  EXPECT_EQ(units(array[1]), u"one");
  EXPECT_EQ(units(array[2]), u"two");
  EXPECT_TRUE(array[0].isNull());
}

TEST(OroStringArray, GrowsByDoublingToHoldTheIndex) {
  OroStringArray array;
  array[0] = borrowed(u"zero");
  EXPECT_EQ(array.capacity(), 1);
  array[1] = borrowed(u"one");
  EXPECT_EQ(array.capacity(), 2);
  array[2] = borrowed(u"two");
  EXPECT_EQ(array.capacity(), 4);
  array[4] = borrowed(u"four");
  EXPECT_EQ(array.capacity(), 8);
  array[100] = borrowed(u"hundred");
  EXPECT_EQ(array.capacity(), 128);
  EXPECT_EQ(array.lastIndex(), 0) << "access does not move the last index";
  EXPECT_EQ(units(array[2]), u"two");
}

TEST(OroStringArray, AnIndexBelowZeroIsSlotZero) {
  OroStringArray array;
  array[-5] = borrowed(u"zero");
  EXPECT_EQ(units(array[0]), u"zero");
  const OroStringArray& constant = array;
  EXPECT_EQ(units(constant[-1]), u"zero");
  EXPECT_TRUE(constant[1].isEmpty());
  EXPECT_TRUE(constant[1000000].isEmpty());
  EXPECT_EQ(array.capacity(), 1) << "reading does not grow a constant array";
}

TEST(OroStringArray, StartsWithTheGivenRoom) {
  OroStringArray array(21);
  EXPECT_EQ(array.capacity(), 21);
  EXPECT_EQ(array.lastIndex(), 0);
}

TEST(OroStringArray, TheLastIndexMovesByItself) {
  OroStringArray array;
  array.append(borrowed(u"one"));
  array.append(borrowed(u"two"));
  array.setLastIndex(1);
  EXPECT_EQ(units(array[2]), u"two");
  array.setLastIndex(9);
  EXPECT_GE(array.capacity(), 10);
  EXPECT_TRUE(array[9].isNull());
  array.setLastIndex(-4);
  EXPECT_EQ(array.lastIndex(), 0);
}

TEST(OroStringArray, CopiesItsTexts) {
  OroStringArray array;
  array.append(OroString(u"one"));
  OroStringArray copy(array);
  copy[1].append("!");
  EXPECT_EQ(units(array[1]), u"one");
  EXPECT_EQ(units(copy[1]), u"one!");
  OroStringArray moved(std::move(copy));
  EXPECT_EQ(units(moved[1]), u"one!");
  EXPECT_EQ(copy.lastIndex(), 0);
  OroStringArray pairs;
  pairs.append(OroString(u"\u00DF", "ss"));
  EXPECT_STREQ(OroStringArray(pairs)[1].toNarrow(), "ss") << "a borrowed narrow form is shared";
  moved.clear();
  EXPECT_EQ(moved.lastIndex(), 0);
  EXPECT_EQ(moved.capacity(), 0);
}

}  // namespace
