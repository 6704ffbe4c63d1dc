#include "framework/kelchildtable.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/kelregistry.h"

namespace {

TEST(KelChildTable, NumbersStartAtOneAndFollowTheMaking) {
  KelChildTable table;
  EXPECT_EQ(table.nodeCount(), 0);
  KelRegistry* const a = table.add("a");
  KelRegistry* const b = table.add("b");
  EXPECT_EQ(table.nodeCount(), 2);
  EXPECT_EQ(table.node(1), a);
  EXPECT_EQ(table.node(2), b);
  EXPECT_TRUE(table.key(1) == "a");
  EXPECT_EQ(table.find("b"), b);
  EXPECT_EQ(table.find("c"), nullptr);
}

TEST(KelChildTable, RemovedChildLeavesAGapAndItsNumberIsNotGivenAgain) {
  KelChildTable table;
  table.add("a");
  table.add("b");
  EXPECT_TRUE(table.remove("a"));
  EXPECT_FALSE(table.remove("a"));
  EXPECT_EQ(table.nodeCount(), 2);
  EXPECT_EQ(table.entryCount(), 1);
  EXPECT_EQ(table.node(1), nullptr);
  EXPECT_TRUE(table.key(1).isEmpty());
  EXPECT_EQ(table.find("a"), nullptr);
  table.add("a");
  EXPECT_EQ(table.nodeCount(), 3);
  EXPECT_TRUE(table.key(3) == "a");
}

TEST(KelChildTable, ManyChildrenAreFoundByTheirKeys) {
  KelChildTable table;
  constexpr int count = 1000;
  for (int i = 1; i <= count; ++i) table.add(std::to_string(i).c_str());
  EXPECT_EQ(table.entryCount(), count);
  for (int i = 1; i <= count; ++i) {
    ASSERT_EQ(table.find(std::to_string(i).c_str()), table.node(i)) << i;
  }
}

TEST(KelChildTable, ChildrenAreNotCounted) {
  KelChildTable table;
  EXPECT_EQ(table.add("a")->refCount(), 0);
}

TEST(KelChildTable, KeyIsACopy) {
  KelChildTable table;
  std::string key = "name";
  table.add(key.c_str());
  key = "gone";
  EXPECT_NE(table.find("name"), nullptr);
  EXPECT_TRUE(table.key(1) == "name");
}

}  // namespace
