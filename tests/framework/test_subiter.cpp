#include "framework/subiter.h"

#include <gtest/gtest.h>

#include "framework/kelchildtable.h"
#include "framework/kelregistry.h"
#include "tests/support/slotnumber.h"

namespace {

void add(KelChildTable& table, const char* key, const char* value) {
  KelCString own;
  table.add(key)->setValue(own, KelCString(value));
}

TEST(SubIter, StandsOnTheFirstChildAtOnce) {
  KelChildTable table;
  add(table, "a", "1");
  add(table, "b", "2");
  SubIter walk(&table);
  EXPECT_FALSE(walk.atEnd());
  EXPECT_TRUE(walk.key() == "a");
  EXPECT_TRUE(walk.value() == "1");
  walk.next();
  EXPECT_TRUE(walk.key() == "b");
  walk.next();
  EXPECT_TRUE(walk.atEnd());
  EXPECT_TRUE(walk.key().isEmpty());
  EXPECT_TRUE(walk.value().isEmpty());
}

TEST(SubIter, BothRewindsGoToTheFirstChild) {
  KelChildTable table;
  add(table, "a", "1");
  SubIter walk(&table);
  walk.next();
  walk.rewind();
  EXPECT_TRUE(walk.key() == "a");
  walk.next();
  walk.rewindAgain();
  EXPECT_TRUE(walk.key() == "a");
}

TEST(SubIter, RemovedChildrenAreSkipped) {
  KelChildTable table;
  for (const char* key : {"a", "b", "c", "d"}) add(table, key, key);
  table.remove("a");
  table.remove("c");
  table.remove("d");
  SubIter walk(&table);
  EXPECT_TRUE(walk.key() == "b");
  walk.next();
  EXPECT_TRUE(walk.atEnd());
}

TEST(SubIter, WithoutATableItIsAtItsEnd) {
  SubIter walk(nullptr);
  EXPECT_TRUE(walk.atEnd());
  walk.next();
  walk.rewind();
  EXPECT_TRUE(walk.atEnd());
  EXPECT_TRUE(walk.key().isEmpty());
}

TEST(SubIterSlots, StandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&SubIter::rewind), 3);  // behind the destructor's two
  EXPECT_EQ(tests::slotNumber(&SubIter::rewindAgain), 4);
  EXPECT_EQ(tests::slotNumber(&SubIter::next), 5);
  EXPECT_EQ(tests::slotNumber(&SubIter::atEnd), 6);
  EXPECT_EQ(tests::slotNumber(&SubIter::value), 7);
  EXPECT_EQ(tests::slotNumber(&SubIter::key), 8);
}

}  // namespace
