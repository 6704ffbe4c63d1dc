// What is left of the address space follows what is used of it. Wine shows one figure for ever.

#include <gtest/gtest.h>

#include <vector>

#include "platform/memoryfigures.h"

namespace {

TEST(MemoryFigures, AddressSpaceThatIsUsedIsNotAvailable) {
  platform::MemoryFigures before;
  platform::MemoryFigures after;
  constexpr std::size_t bytes = 256u << 20;
  ASSERT_TRUE(platform::memoryFigures(before));
  std::vector<char> block;
  block.reserve(bytes);
  ASSERT_TRUE(platform::memoryFigures(after));
  EXPECT_LE(after.virtualAvailable + bytes / 2, before.virtualAvailable);
}

}  // namespace
