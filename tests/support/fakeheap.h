// FakeHeap: the heap under kelMalloc and kelRealloc for the life of this object; it counts what is
// asked of it and can refuse.
//
//   tests::FakeHeap heap;
//   heap.refuseAbove = 1000;
//   ...
//   EXPECT_EQ(heap.allocations, 0);
//
// Blocks of strings that are kept for reuse are not seen here; PoolOff (pooloff.h) shows them all.
// One at a time, while no other thread allocates.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>

#include "orobasictypes/kelrealloc.h"
#include "platform/memoryfigures.h"

namespace tests {

class FakeHeap {
 public:
  FakeHeap() : before_(kelHeapCalls) {
    current = this;
    kelHeapCalls = {[](size_t bytes) { return current->allocate(bytes); },
                    [](void* block, size_t bytes) { return current->reallocate(block, bytes); },
                    [](void* block) { current->release(block); }};
  }
  ~FakeHeap() {
    kelHeapCalls = before_;
    current = nullptr;
  }
  FakeHeap(const FakeHeap&) = delete;
  FakeHeap& operator=(const FakeHeap&) = delete;

  void refuseNothing() {
    refuseAbove = PTRDIFF_MAX - 1;
    refuseUpToCall = 0;
    refuseGrowth = false;
  }

  size_t refuseAbove = PTRDIFF_MAX - 1;  // larger requests, in bytes, get null
  size_t refuseUpToCall = 0;             // the requests up to this number, from 1, get null
  bool refuseGrowth = false;             // blocks keep their size: every reallocation gets null
  bool fillsBlocks = false;              // new bytes are never zero by chance
  std::function<void()> onAllocate;      // called before each request for a new block
  int allocations = 0;                   // requests for a new block
  int reallocations = 0;
  int frees = 0;              // of blocks, null not counted
  std::vector<size_t> sizes;  // bytes of each request in turn, refused ones too

 private:
  bool refuses(size_t bytes) {
    sizes.push_back(bytes);
    return bytes > refuseAbove || sizes.size() <= refuseUpToCall;
  }
  void* allocate(size_t bytes) {
    ++allocations;
    if (onAllocate) onAllocate();
    return refuses(bytes) ? nullptr : filled(std::malloc(bytes), 0, bytes);
  }
  void* reallocate(void* block, size_t bytes) {
    ++reallocations;
    if (refuses(bytes) || refuseGrowth) return nullptr;
    const size_t before = platform::heapBlockSize(block);
    return filled(std::realloc(block, bytes), before, bytes);
  }
  void* filled(void* block, size_t from, size_t to) const {
    if (fillsBlocks && block != nullptr && from < to) {
      std::memset(static_cast<char*>(block) + from, 0xCC, to - from);
    }
    return block;
  }
  void release(void* block) {
    frees += block != nullptr;
    std::free(block);
  }

  static inline FakeHeap* current = nullptr;
  const KelHeapCalls before_;
};

}  // namespace tests
