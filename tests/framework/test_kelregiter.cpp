#include "framework/kelregiter.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/kelregistry.h"
#include "orobasictypes/iptr.h"
#include "tests/support/slotnumber.h"

namespace {

class RegIter : public testing::Test {
 protected:
  void set(const char* key, const char* value) {
    KelCString text(key);
    registry_.setValue(text, KelCString(value));
  }
  IPtr<Velmora::IOroRegIter> iterate(const char* key, int32_t depth) {
    KelCString text(key);
    IPtr<Velmora::IOroRegIter> entry(registry_.newIterator(text));
    entry->setDepth(depth);
    return entry;
  }
  static std::string keyOf(Velmora::IOroRegIter& entry) {
    KelCString key;
    entry.key(key);
    return key.c_str();
  }
  static std::string valueOf(Velmora::IOroRegIter& entry) {
    KelCString value;
    entry.value(value);
    return value.c_str();
  }
  std::string entries(const char* key, int32_t depth) {
    const IPtr<Velmora::IOroRegIter> entry = iterate(key, depth);
    std::string all;
    for (entry->first(); !entry->atEnd(); entry->next()) {
      all += keyOf(*entry) + "=" + valueOf(*entry) + ";";
    }
    return all;
  }

  KelRegistry registry_;
};

TEST_F(RegIter, OneLevelVisitsChildrenWithValuesInTheOrderOfMaking) {
  set("zebra", "1");
  set("apple", "2");
  set("dir/inner", "3");
  set("mango", "4");
  EXPECT_EQ(entries("", 1), "zebra=1;apple=2;mango=4;");
}

TEST_F(RegIter, DepthIsOneAtFirst) {
  set("A/B", "x");
  KelCString key;
  const IPtr<Velmora::IOroRegIter> entry(registry_.newIterator(key));
  entry->first();
  EXPECT_TRUE(entry->atEnd());
}

TEST_F(RegIter, ChildrenWithoutValuesGiveAnEndAtOnce) {
  set("A", "");
  set("B", "");
  EXPECT_EQ(entries("", 1), "");
}

TEST_F(RegIter, TwoLevelsEnterDirectories) {
  set("A/B", "x");
  EXPECT_EQ(entries("", 2), "A/B=x;");
}

TEST_F(RegIter, TwoLevelsGoOnBehindADirectoryThatWasLeftByAStep) {
  set("A/B", "1");
  set("A/C", "2");
  set("D", "3");
  set("E/F", "4");
  EXPECT_EQ(entries("", 2), "A/B=1;A/C=2;D=3;E/F=4;");
}

TEST_F(RegIter, KeysAreRelativeToTheNode) {
  set("S/A/B", "x");
  set("S/C", "y");
  EXPECT_EQ(entries("S", 2), "A/B=x;C=y;");
}

TEST_F(RegIter, NodeWithValueAndChildrenIsAnEntryAndNotEntered) {
  set("A", "own");
  set("A/B", "x");
  set("C", "y");
  EXPECT_EQ(entries("", 2), "A=own;C=y;");
}

TEST_F(RegIter, EmptyDirectoryEndsADeepWalk) {
  set("A", "");
  set("B", "x");
  EXPECT_EQ(entries("", 1), "B=x;");
  EXPECT_EQ(entries("", 2), "");
}

TEST_F(RegIter, LevelThatRunsOutWithinAStepEndsTheWalk) {
  set("A/B", "x");
  set("A/E", "");  // behind the last entry of its level
  set("C", "y");
  EXPECT_EQ(entries("", 2), "A/B=x;");
}

TEST_F(RegIter, FirstAfterAnEarlyEndStartsAnew) {
  set("A/B", "x");
  set("A/E", "");
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 2);
  entry->first();
  entry->next();
  ASSERT_TRUE(entry->atEnd());
  entry->first();
  ASSERT_FALSE(entry->atEnd());
  EXPECT_EQ(keyOf(*entry), "A/B");
}

TEST_F(RegIter, ThirdLevelMeetsTheSecondAgain) {
  set("A/E", "");
  set("A/B", "x");
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 3);
  entry->first();
  EXPECT_TRUE(entry->atEnd() || keyOf(*entry) == "A/E/B") << keyOf(*entry);
  // A/E is entered as the children of A: E again, at the depth limit skipped, then B.
  ASSERT_FALSE(entry->atEnd());
  EXPECT_EQ(keyOf(*entry), "A/E/B");
  EXPECT_EQ(valueOf(*entry), "x");
}

TEST_F(RegIter, NoLimitWalksATreeOfTwoLevels) {
  set("A/B", "1");
  set("C/D", "2");
  EXPECT_EQ(entries("", 0), "A/B=1;C/D=2;");
}

TEST_F(RegIter, ChildWithAnEmptyKeyIsALevelAtItsEnd) {
  set("/B", "x");
  set("C", "y");
  EXPECT_EQ(entries("", 2), "");
}

TEST_F(RegIter, NewIteratorAndRewindDoNotLookForAnEntry) {
  set("A", "");
  set("B", "x");
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 1);
  EXPECT_EQ(keyOf(*entry), "A");
  entry->first();
  EXPECT_EQ(keyOf(*entry), "B");
  entry->rewind();
  EXPECT_EQ(keyOf(*entry), "A");
}

TEST_F(RegIter, RewindLeavesInnerLevels) {
  set("A/B", "x");
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 2);
  entry->first();
  ASSERT_EQ(keyOf(*entry), "A/B");
  entry->rewind();
  EXPECT_EQ(keyOf(*entry), "A");
}

TEST_F(RegIter, NextAtTheEndStaysThere) {
  set("A", "x");
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 1);
  entry->first();
  entry->next();
  ASSERT_TRUE(entry->atEnd());
  entry->next();
  EXPECT_TRUE(entry->atEnd());
  EXPECT_EQ(keyOf(*entry), "");
  EXPECT_EQ(valueOf(*entry), "");
}

TEST_F(RegIter, GoesWithLevelsStillOpen) {
  set("A/B", "x");
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 2);
  entry->first();  // two levels open; the leak checker sees the rest
  EXPECT_FALSE(entry->atEnd());
}

TEST_F(RegIter, AnswersToItsNamesAlone) {
  const IPtr<Velmora::IOroRegIter> entry = iterate("", 1);
  EXPECT_EQ(oroQuery<Velmora::IOroRegIter>(entry.get()), entry.get());
  EXPECT_EQ(oroQuery<Velmora::IOroRegistry>(entry.get()), nullptr);
  EXPECT_STREQ(entry->getClassName(), "KelRegIter");
}

TEST(RegIterSlots, StandInTheirOrder) {
  using Velmora::IOroRegIter;
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::rewind), 1);
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::first), 2);
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::next), 3);
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::atEnd), 4);
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::value), 5);
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::key), 6);
  EXPECT_EQ(tests::slotNumber(&IOroRegIter::setDepth), 7);
}

}  // namespace
