#include "platform/memoryfigures.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "platform/hooks.h"

namespace {

TEST(MemoryFigures, FitTogether) {
  platform::MemoryFigures figures;
  ASSERT_TRUE(platform::memoryFigures(figures));
  EXPECT_GT(figures.physicalTotal, 64u << 20);
  EXPECT_GE(figures.physicalTotal, figures.physicalAvailable);
  EXPECT_GE(figures.pageFileTotal, figures.pageFileAvailable);
  EXPECT_GT(figures.virtualTotal, figures.virtualAvailable) << "this process uses some";
  EXPECT_GT(figures.virtualAvailable, std::uint64_t{1} << 40);
  EXPECT_EQ(figures.extendedAvailable, 0u);
}

TEST(WorkingSet, GrowsWithMemoryThatIsWritten) {
  platform::WorkingSet before;
  platform::WorkingSet after;
  constexpr std::size_t bytes = 64u << 20;
  ASSERT_TRUE(platform::workingSet(before));
  EXPECT_GE(before.peak, before.current);
  std::vector<char> block(bytes, 'x');
  ASSERT_TRUE(platform::workingSet(after));
  EXPECT_GT(after.current, before.current + bytes / 2);
  EXPECT_EQ(block[bytes / 3], 'x');
}

TEST(MemoryFigures, AreThoseOfAHook) {
  const platform::HookGuard figuresGuard(
      platform::memoryFiguresHook, +[](platform::MemoryFigures& out) {
        out.physicalTotal = 77;
        return true;
      });
  const platform::HookGuard setGuard(
      platform::workingSetHook, +[](platform::WorkingSet&) { return false; });
  platform::MemoryFigures figures;
  EXPECT_TRUE(platform::memoryFigures(figures));
  EXPECT_EQ(figures.physicalTotal, 77u);
  platform::WorkingSet set;
  EXPECT_FALSE(platform::workingSet(set));
  EXPECT_EQ(platform::memoryAllowance(), 77u) << "never more than the machine has";
}

TEST(MemoryAllowance, IsAtMostTheMachinesMemory) {
  platform::MemoryFigures figures;
  ASSERT_TRUE(platform::memoryFigures(figures));
  EXPECT_GT(platform::memoryAllowance(), 0u);
  EXPECT_LE(platform::memoryAllowance(), figures.physicalTotal);
}

TEST(HeapBlockSize, IsAtLeastWhatWasAskedFor) {
  for (const std::size_t bytes : {1u, 10u, 1000u, 100000u}) {
    void* const block = std::malloc(bytes);
    EXPECT_GE(platform::heapBlockSize(block), bytes);
    EXPECT_LE(platform::heapBlockSize(block), bytes + 8192);
    std::free(block);
  }
  EXPECT_EQ(platform::heapBlockSize(nullptr), 0u);
}

}  // namespace
