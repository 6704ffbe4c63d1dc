#include "components/memorymanager/blockmanager.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/pages.h"
#include "platform/text.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

constexpr int64_t kPage = 24576;
constexpr int64_t kMuch = int64_t{1} << 40;

bool isFilled(const char* block, int64_t bytes, char value) {
  return std::all_of(block, block + bytes, [value](char c) { return c == value; });
}

class BlockManagerTest : public testing::Test {
 protected:
  std::u16string folder() { return platform::fromSystemPath(folder_.path().string()); }
  BlockManager::Limits limits(int64_t core, int64_t swap) { return {core, swap, folder()}; }

  tests::TempFolder folder_;
};

TEST_F(BlockManagerTest, BlocksAreApartAndKeepTheirContents) {
  BlockManager blocks(limits(40 * kPage, kMuch));
  std::vector<char*> all;
  for (int i = 0; i < 200; ++i) {
    char* const block = blocks.allocate(i % 3 == 0 ? kPage : 8192, false);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 64, 0u);
    std::memset(block, i, i % 3 == 0 ? kPage : 8192);
    all.push_back(block);
  }
  EXPECT_EQ(blocks.coreBytes() + blocks.swapBytes(), 67 * kPage + 133 * 8192);
  EXPECT_LE(blocks.coreBytes(), 40 * kPage);
  EXPECT_GT(blocks.coreBytes(), 39 * kPage);
  for (int i = 0; i < 200; ++i) {
    EXPECT_TRUE(isFilled(all[i], i % 3 == 0 ? kPage : 8192, static_cast<char>(i))) << i;
  }
  for (char* block : all) blocks.free(block);
  EXPECT_EQ(blocks.coreBytes(), 0);
  EXPECT_EQ(blocks.swapBytes(), 0);
}

TEST_F(BlockManagerTest, BlocksAreZeroWhenAskedForAlsoWhenUsedBefore) {
  for (const int64_t core : {kMuch, int64_t{0}}) {
    BlockManager blocks(limits(core, kMuch));
    for (int round = 0; round < 3; ++round) {
      std::vector<char*> all;
      for (int i = 0; i < 100; ++i) {
        char* const block = blocks.allocate(kPage, true);
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(isFilled(block, kPage, 0)) << round << " " << i;
        std::memset(block, 0xAA, kPage);
        all.push_back(block);
      }
      for (char* block : all) blocks.free(block);
    }
  }
}

TEST_F(BlockManagerTest, AnySizeCanBeHad) {
  for (const int64_t core : {kMuch, int64_t{0}}) {
    BlockManager blocks(limits(core, kMuch));
    for (const int64_t bytes : {int64_t{0}, int64_t{1}, int64_t{63}, int64_t{64}, int64_t{65},
                                int64_t{4097}, int64_t{1} << 20, (int64_t{1} << 20) + 1,
                                (int64_t{2} << 20) + 5, int64_t{9} << 20, int64_t{-5}}) {
      char* const block = blocks.allocate(bytes, true);
      ASSERT_NE(block, nullptr) << bytes;
      const int64_t size = std::max<int64_t>(bytes, 1);
      EXPECT_TRUE(isFilled(block, size, 0));
      std::memset(block, 1, static_cast<size_t>(size));
      EXPECT_GE(blocks.coreBytes() + blocks.swapBytes(), size);
      blocks.free(block);
      EXPECT_EQ(blocks.coreBytes() + blocks.swapBytes(), 0);
    }
  }
}

TEST_F(BlockManagerTest, FreeingWhatIsNoBlockIsHarmless) {
  BlockManager blocks(limits(kMuch, kMuch));
  blocks.free(nullptr);
  char* const block = blocks.allocate(kPage, false);
  char* const other = blocks.allocate(kPage, false);
  char local = 0;
  blocks.free(&local);
  blocks.free(block + 1);
  blocks.free(block - 1);
  EXPECT_EQ(blocks.coreBytes(), 2 * kPage);
  blocks.free(block);
  blocks.free(block);
  EXPECT_EQ(blocks.coreBytes(), kPage);
  blocks.free(other);
  EXPECT_EQ(blocks.coreBytes(), 0);
}

TEST_F(BlockManagerTest, BlocksBeyondTheCoreLimitLieInTheFile) {
  BlockManager blocks(limits(2 * kPage, 3 * kPage));
  std::vector<char*> all;
  for (int i = 0; i < 5; ++i) {
    all.push_back(blocks.allocate(kPage, false));
    ASSERT_NE(all.back(), nullptr);
    EXPECT_EQ(blocks.coreBytes(), std::min(i + 1, 2) * kPage);
    EXPECT_EQ(blocks.swapBytes(), std::max(i - 1, 0) * kPage);
  }
  EXPECT_EQ(blocks.allocate(kPage, false), nullptr) << "both limits are reached";
  EXPECT_EQ(blocks.allocate(1, false), nullptr);
  blocks.free(all[4]);
  EXPECT_EQ(blocks.swapBytes(), 2 * kPage);
  blocks.free(all[0]);
  char* const again = blocks.allocate(kPage, false);
  EXPECT_EQ(blocks.coreBytes(), 2 * kPage) << "memory comes first whenever it has room";
  blocks.free(again);
  for (int i = 1; i < 4; ++i) blocks.free(all[static_cast<size_t>(i)]);
}

TEST_F(BlockManagerTest, FolderThatCannotBeWrittenMeansMemory) {
  BlockManager blocks({0, kMuch, folder() + u"\\absent"});
  char* const block = blocks.allocate(kPage, true);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(blocks.coreBytes(), kPage);
  EXPECT_EQ(blocks.swapBytes(), 0);
  blocks.free(block);
}

TEST_F(BlockManagerTest, FullDiskMeansMemory) {
  BlockManager blocks(limits(0, kMuch));
  tests::TestDisk disk;
  disk.refuseFrom(1);
  char* const first = blocks.allocate(kPage, true);
  EXPECT_EQ(blocks.swapBytes(), kPage);
  char* const second = blocks.allocate(int64_t{3} << 20, true);
  ASSERT_NE(second, nullptr);
  std::memset(second, 1, 3 << 20);
  EXPECT_EQ(blocks.swapBytes(), kPage);
  EXPECT_EQ(blocks.coreBytes(), int64_t{3} << 20);
  blocks.free(first);
  blocks.free(second);
}

TEST_F(BlockManagerTest, FileLeavesNothingInItsFolder) {
  {
    BlockManager blocks(limits(0, kMuch));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path())) << "not made before it is needed";
    char* const block = blocks.allocate(kPage, true);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(blocks.swapBytes(), kPage);
    blocks.free(block);
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(BlockManagerTest, EmptyAreasGoBackFirst) {
  BlockManager blocks(limits(kMuch, kMuch));
  EXPECT_FALSE(blocks.release()) << "there is nothing";
  std::vector<char*> all;
  for (int i = 0; i < 300; ++i) all.push_back(blocks.allocate(kPage, false));
  for (char* block : all) blocks.free(block);
  EXPECT_TRUE(blocks.release()) << "the one that was kept";
  EXPECT_FALSE(blocks.release());
  char* const block = blocks.allocate(kPage, true);
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(isFilled(block, kPage, 0));
  blocks.free(block);
}

TEST_F(BlockManagerTest, ReleaseMovesTheFileOutOfMemoryAndEnds) {
  BlockManager blocks(limits(0, kMuch));
  constexpr int count = 400;
  std::vector<char*> all;
  for (int i = 0; i < count; ++i) {
    all.push_back(blocks.allocate(kPage, false));
    std::memset(all.back(), i, kPage);
  }
  const auto resident = [&] {
    size_t bytes = 0;
    for (char* block : all) bytes += platform::residentBytes(block, kPage);
    return bytes;
  };
  EXPECT_EQ(resident(), size_t{count} * kPage);
  int released = 0;
  size_t before = resident();
  while (blocks.release()) {
    const size_t now = resident();
    EXPECT_LT(now, before) << "true means that something went";
    before = now;
    ASSERT_LE(++released, count);
  }
  EXPECT_FALSE(blocks.release());
  for (int i = 0; i < count; ++i) {
    ASSERT_TRUE(isFilled(all[static_cast<size_t>(i)], kPage, static_cast<char>(i))) << i;
  }
  for (char* block : all) blocks.free(block);
}

TEST_F(BlockManagerTest, AfterTheEndOfTheFileBlocksCanStillBeFreed) {
  BlockManager blocks(limits(2 * kPage, kMuch));
  std::vector<char*> all;
  for (int i = 0; i < 200; ++i) all.push_back(blocks.allocate(kPage, true));
  blocks.endFile();
  EXPECT_EQ(blocks.swapBytes(), 0);
  EXPECT_EQ(blocks.coreBytes(), 2 * kPage);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
  // New blocks come from memory, and never where an old one may still be named.
  const std::set<char*> old(all.begin() + 2, all.end());
  for (int i = 0; i < 300; ++i) {
    char* const block = blocks.allocate(kPage, true);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(old.count(block), 0u);
    all.push_back(block);
  }
  for (char* block : all) blocks.free(block);
  EXPECT_EQ(blocks.coreBytes(), 0);
  EXPECT_EQ(blocks.swapBytes(), 0);
  blocks.endFile();
}

TEST_F(BlockManagerTest, RandomUseKeepsAllBlocksApart) {
  BlockManager blocks(limits(30 * kPage, kMuch));
  std::mt19937 random(7);
  struct Block {
    char* at;
    int64_t bytes;
    char value;
  };
  std::vector<Block> live;
  for (int step = 0; step < 20000; ++step) {
    if (live.size() < 300 && random() % 2 == 0) {
      const int64_t bytes = random() % 100 == 0 ? 1 + random() % 3000000 : 1 + random() % 30000;
      const bool zero = random() % 2 == 0;
      char* const at = blocks.allocate(bytes, zero);
      ASSERT_NE(at, nullptr);
      if (zero) {
        ASSERT_EQ(at[0], 0);
        ASSERT_EQ(at[bytes - 1], 0);
        ASSERT_EQ(at[bytes / 2], 0);
      }
      const char value = static_cast<char>(random());
      at[0] = at[bytes / 2] = at[bytes - 1] = value;
      live.push_back({at, bytes, value});
    } else if (!live.empty()) {
      const size_t index = random() % live.size();
      const Block block = live[index];
      ASSERT_EQ(block.at[0], block.value);
      ASSERT_EQ(block.at[block.bytes / 2], block.value);
      ASSERT_EQ(block.at[block.bytes - 1], block.value);
      blocks.free(block.at);
      live[index] = live.back();
      live.pop_back();
    }
    if (step % 4000 == 0) blocks.release();
  }
  for (const Block& block : live) blocks.free(block.at);
  EXPECT_EQ(blocks.coreBytes() + blocks.swapBytes(), 0);
}

TEST_F(BlockManagerTest, ThreadsTakeGiveAndReleaseAtOnce) {
  BlockManager blocks(limits(20 * kPage, 100 * kPage));
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&, thread] {
      for (int round = 0; round < 100; ++round) {
        char* mine[10] = {};
        for (char*& block : mine) {
          block = blocks.allocate(kPage, true);
          ASSERT_NE(block, nullptr);
          ASSERT_EQ(block[5000], 0);
          block[0] = block[5000] = static_cast<char>(thread);
        }
        if (round % 20 == thread) blocks.release();
        EXPECT_LE(blocks.coreBytes(), 20 * kPage);
        EXPECT_LE(blocks.swapBytes(), 100 * kPage);
        for (char* block : mine) {
          ASSERT_EQ(block[0], static_cast<char>(thread));
          ASSERT_EQ(block[5000], static_cast<char>(thread));
          blocks.free(block);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(blocks.coreBytes() + blocks.swapBytes(), 0);
}

}  // namespace
