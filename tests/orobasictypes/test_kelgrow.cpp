#include "orobasictypes/kelgrow.h"

#include <gtest/gtest.h>

namespace {

TEST(KelGrow, NextCapacity) {
  struct Row {
    int32_t capacity, needed, expected;
  };
  for (const Row& row : {Row{0, 1, 1},
                         {3, 4, 6},
                         {5, 2, 5},
                         {0, 5, 8},
                         {8, 5, 8},
                         {8, 8, 8},
                         {3, 7, 12},
                         {0, 0, 0},
                         {-3, -5, -3},
                         {-3, 0, 1},
                         {-3, 3, 4},
                         {1, 0x40000000, 0x40000000},
                         {0x20000000, 0x30000000, 0x40000000},
                         {0x40000000, 0x40000001, 0x40000001},
                         {1, 0x40000001, 0x40000001},
                         {0x30000000, 0x70000000, 0x70000000},
                         {0, INT32_MAX, INT32_MAX},
                         {INT32_MAX, INT32_MAX, INT32_MAX}}) {
    EXPECT_EQ(kelGrowSize(row.capacity, row.needed), row.expected)
        << row.capacity << " to " << row.needed;
  }
}

}  // namespace
