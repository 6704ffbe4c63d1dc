#include "orobasictypes/kelpool.h"

#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/bucketmemoryallocator.h"
#include "platform/hooks.h"
#include "platform/process.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

TEST(KelPool, SizesAreRounded) {
  struct Row {
    int32_t size, actual;
  };
  for (const Row& row : {Row{0, 4},
                         {1, 4},
                         {4, 4},
                         {5, 8},
                         {8189, 8192},
                         {8192, 8192},
                         {8193, 16384},
                         {16384, 16384},
                         {16385, 32768},
                         {131073, 262144},
                         {262144, 262144},
                         {262145, 262145},
                         {1000003, 1000003},
                         {-1, 4},
                         {INT32_MIN, 4}}) {
    int32_t actual = -1;
    void* const block = kelPoolAlloc(row.size, actual);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(actual, row.actual) << row.size;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 8, 0u);
    std::memset(block, 0x55, static_cast<size_t>(actual));
    kelPoolFree(actual, block);
  }
}

TEST(KelPool, BlockCarriesAHeaderOfEightBytes) {
  tests::FakeHeap heap;
  int32_t actual = 0;
  void* const small = kelPoolAlloc(5, actual);
  void* const large = kelPoolAlloc(262145, actual);
  EXPECT_EQ(heap.sizes, (std::vector<size_t>{16, 262153}));
  kelPoolFree(8, small);
  kelPoolFree(262145, large);
  kelPoolShutdown();
  EXPECT_EQ(heap.frees, 2);
}

// Stands for the allocator of another module.
class OtherAllocator : public BucketMemoryAllocator {
 public:
  void Free(void* header) override { freed = header; }
  void* freed = nullptr;
};

TEST(KelPool, BlockIsFreedByTheAllocatorThatItsHeaderNames) {
  static_assert(sizeof(BucketMemoryAllocator) == sizeof(void*), "no data");
  struct Block {
    BucketMemoryAllocator* allocator;
    char bytes[8];
  };
  OtherAllocator allocator;
  Block block{&allocator, {}};
  tests::FakeHeap heap;
  kelPoolFree(0, block.bytes);
  EXPECT_EQ(allocator.freed, nullptr);
  kelPoolFree(8, block.bytes);
  EXPECT_EQ(allocator.freed, &block);
  EXPECT_EQ(heap.frees, 0);
}

TEST(KelPool, AllocatorOfABlockStandsInItsHeader) {
  int32_t actual = 0;
  void* const block = kelPoolAlloc(5, actual);
  auto* const header = static_cast<BucketMemoryAllocator**>(block) - 1;
  tests::FakeHeap heap;
  (*header)->Free(header);
  EXPECT_EQ(heap.frees, 1);
  EXPECT_EQ(tests::slotNumber(&BucketMemoryAllocator::Free), 3) << "behind the destructor's two";
}

TEST(KelPool, NothingIsFreedForSizeZeroOrNull) {
  tests::FakeHeap heap;
  int32_t actual = 0;
  void* const block = kelPoolAlloc(5, actual);
  kelPoolFree(0, block);
  kelPoolFree(8, nullptr);
  EXPECT_EQ(heap.frees, 0);
  kelPoolFree(actual, block);
}

TEST(KelPool, LargestSizesEndAsExhaustion) {
  struct Ended {};
  tests::FakeHeap heap;
  heap.refuseAbove = 1 << 20;
  const platform::HookGuard guard(
      platform::endProcessHook, +[](int) { throw Ended(); });
  int32_t actual = 0;
  for (const int32_t size : {INT32_MAX, INT32_MAX - 7, INT32_MAX - 8}) {
    EXPECT_THROW(kelPoolAlloc(size, actual), Ended) << size;
  }
}

TEST(KelPool, BlocksOutliveTheShutdown) {
  int32_t actual = 0;
  auto* const block = static_cast<char*>(kelPoolAlloc(10, actual));
  kelPoolShutdown();
  std::memset(block, 1, static_cast<size_t>(actual));
  kelPoolFree(actual, block);
  int32_t again = 0;
  kelPoolFree(again, kelPoolAlloc(10, again));
}

TEST(KelPool, ThreadsTakeAndGiveBackAtOnce) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([i] {
      for (int n = 0; n < 2000; ++n) {
        int32_t actual = 0;
        auto* const block = static_cast<char*>(kelPoolAlloc(n, actual));
        std::memset(block, i, static_cast<size_t>(actual));
        kelPoolFree(actual, block);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
