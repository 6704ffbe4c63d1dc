#include "orobasictypes/kelrealloc.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "interfaces/IOroAssertHandlerCB.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/kelblockfile.h"
#include "orobasictypes/kelmemoryerror.h"
#include "orobasictypes/kelmemoryservices.h"
#include "orobasictypes/sptr.h"
#include "platform/process.h"

namespace {

constexpr char kelreallocSource[] = "orobasictypes/kelrealloc";

KelAssertCallback assertCallback = nullptr;
void* assertContext = nullptr;

// Blocks end below 2 GiB: every other product is a size that the heap refuses.
bool isPossible(int64_t bytes) { return bytes >= 0 && bytes <= INT32_MAX; }

size_t heapSize(int64_t bytes) {
  return isPossible(bytes) ? static_cast<size_t>(bytes) : size_t{PTRDIFF_MAX};
}

// What is told of a request: below 4 GiB its 32 bits with their sign, as callers have always seen
// it, beyond them the product.
int64_t toldBytes(int64_t bytes) {
  return bytes > INT32_MAX && bytes <= int64_t{UINT32_MAX} ? static_cast<int32_t>(bytes) : bytes;
}

unsigned long long printed(int64_t bytes) {
  return static_cast<unsigned long long>(toldBytes(bytes));
}

// The memory manager, asked to give memory back until it refuses. After that it is left alone.
class Plea {
 public:
  bool isOpen() {
    if (!asked_) {
      asked_ = true;
      manager_ = kelmemory::manager();
    }
    return manager_ != nullptr;
  }
  // True when the manager has given something back.
  bool release() {
    if (!isOpen()) return false;
    if (manager_->ReleaseMemory()) return true;
    manager_ = nullptr;
    return false;
  }

 private:
  bool asked_ = false;
  OroMM::IOroMManager* manager_ = nullptr;
};

// Null when the heap refuses for good, or gives null for an empty block.
void* allocate(int64_t bytes, Plea& plea) {
  const size_t size = heapSize(bytes);
  void* block = kelHeapCalls.allocate(size);
  while (block == nullptr && size != 0 && plea.release()) block = kelHeapCalls.allocate(size);
  return block;
}

int32_t shrink(void*& pointer, int32_t elementSize, int32_t target) {
  if (target == 0) {
    if (pointer != nullptr) kelFree(pointer);
    pointer = nullptr;
    return 0;
  }
  // Kept untested: a heap that refuses to shrink shows as a null pointer.
  pointer = kelHeapCalls.reallocate(pointer, heapSize(int64_t{elementSize} * target));
  return target;
}

// A buffer that grows. When the heap refuses, the block stays as it was.
class Growth {
 public:
  Growth(void*& block, int32_t elementSize, int32_t oldCount, int32_t target)
      : block_(block),
        elementSize_(elementSize),
        target_(target),
        oldBytes_(static_cast<size_t>(std::max<int64_t>(bytesOf(oldCount), 0))) {}

  // Gives the block the target's size.
  bool reallocate() {
    const size_t bytes = heapSize(targetBytes());
    void* const moved = kelHeapCalls.reallocate(block_, bytes);
    if (moved == nullptr && bytes != 0) return false;
    block_ = moved;
    clearNew();
    return true;
  }
  bool settleForLess(int32_t minNewSize);
  void moveThroughFile();

  int32_t target() const { return target_; }

 private:
  bool reallocateWithHelp();
  int64_t bytesOf(int32_t count) const { return int64_t{elementSize_} * count; }
  int64_t targetBytes() const { return bytesOf(target_); }
  void clearNew() {
    const size_t bytes = heapSize(targetBytes());
    if (bytes <= oldBytes_) return;
    std::memset(static_cast<char*>(block_) + oldBytes_, 0, bytes - oldBytes_);
  }

  void*& block_;
  const int32_t elementSize_;
  int32_t target_;  // count that is tried
  const size_t oldBytes_;
  Plea plea_;
};

// Ever less of what the caller would like, halving the way down to what it needs, which comes last.
// The first two do not trouble the manager: a smaller block may simply fit.
bool Growth::settleForLess(int32_t minNewSize) {
  constexpr int32_t firstPass = 7;
  constexpr int32_t firstPassWithHelp = 5;
  plea_.isOpen();
  for (int32_t pass = firstPass; pass >= 0 && minNewSize < target_; --pass) {
    target_ = pass > 0 ? static_cast<int32_t>((int64_t{target_} + minNewSize) >> 1) : minNewSize;
    if (reallocate() || (pass <= firstPassWithHelp && reallocateWithHelp())) return true;
  }
  return false;
}

// As often as the manager has pages that could fill the growth, and two more. After a refusal the
// heap is asked once more, since another thread may have freed something.
bool Growth::reallocateWithHelp() {
  constexpr int64_t managerPage = 24576;
  int64_t attempts = (targetBytes() - static_cast<int64_t>(oldBytes_)) / managerPage + 2;
  for (; attempts > 0 && plea_.isOpen(); --attempts) {
    plea_.release();
    if (reallocate()) return true;
  }
  return false;
}

// The heap cannot hold old and new at once: the old contents leave memory for a moment.
void Growth::moveThroughFile() {
  KelBlockFile file;
  if (!file.open()) kelFailMemory(kKelTempFileNotOpened, toldBytes(targetBytes()));
  if (!file.write(block_, oldBytes_)) {
    file.close();
    kelFailMemory(kKelTempFileNotWritten, toldBytes(targetBytes()));
  }
  kelFree(block_);
  block_ = nullptr;
  block_ = allocate(targetBytes(), plea_);
  if (block_ == nullptr && targetBytes() != 0) {
    file.close();
    kelFailMemory(kKelMemoryExhausted, toldBytes(targetBytes()));
  }
  if (!file.readBack(block_, oldBytes_)) {
    file.close();
    kelFree(block_);
    block_ = nullptr;
    kelFailMemory(kKelTempFileNotRead, toldBytes(targetBytes()));
  }
  clearNew();
}

int32_t grow(Growth growth, int32_t minNewSize) {
  if (!growth.reallocate() && !growth.settleForLess(minNewSize)) growth.moveThroughFile();
  return growth.target();
}

// Behind an exhausted operator new: to return is to let it try again. How much it wants it does not
// say.
void releaseForOperatorNew() {
  if (!Plea().release()) kelOutOfMemory(0);
}

}  // namespace

bool kelTraceAllocations = false;
constinit KelHeapCalls kelHeapCalls = {std::malloc, std::realloc, std::free};

int64_t kelMalloc(void*& pointer, int32_t elementSize, int32_t count) {
  const int64_t bytes = int64_t{elementSize} * count;
  if (kelTraceAllocations) [[unlikely]] {
    std::printf("kelMalloc: %d : %d : %llu\n", elementSize, count, printed(bytes));
  }
  pointer = kelHeapCalls.allocate(heapSize(bytes));
  if (pointer == nullptr && bytes != 0) [[unlikely]] {
    Plea plea;
    if (plea.release()) pointer = allocate(bytes, plea);
    if (pointer == nullptr) kelOutOfMemory(toldBytes(bytes));
  }
  return count;
}

// The order of the tests is what callers rely on.
int32_t kelRealloc(void*& pointer, int32_t elementSize, int32_t curSize, int32_t minNewSize,
                   int32_t maxNewSize) {
  if (curSize == minNewSize) return curSize;
  if ((pointer == nullptr || curSize == 0) && minNewSize > 0) {
    return static_cast<int32_t>(kelMalloc(pointer, elementSize, minNewSize));
  }
  const int32_t target = maxNewSize == -1 ? minNewSize : maxNewSize;
  if (target < minNewSize) kelAssertFail("maxNewSize >= minNewSize", kelreallocSource, 421);
  if (kelTraceAllocations) {
    std::printf("kelRealloc: %d : %d : %d : %llu\n", elementSize, curSize, target,
                printed(int64_t{elementSize} * target));
  }
  if (target < curSize) return shrink(pointer, elementSize, target);
  if (minNewSize <= curSize) return curSize;
  if (target < minNewSize) {
    kelAssertFail("minNewSize > curSize && maxNewSize >= minNewSize", kelreallocSource, 454);
  }
  return grow(Growth(pointer, elementSize, curSize, target), minNewSize);
}

int32_t kelFree(void* pointer) {
  kelHeapCalls.release(pointer);
  return 1;
}

void kelHelpOperatorNew() {
  if (std::get_new_handler() == nullptr) std::set_new_handler(releaseForOperatorNew);
}

void kelFindMemoryManager() { kelmemory::manager(); }

void kelAssertFail(const char* expression, const char* file, int32_t line) {
  if (assertCallback != nullptr) {
    assertCallback(assertContext, expression, file, line);
    return;
  }
  SPtr<IOroAssertHandlerCB> handler;
  if (!handler) platform::endProcess(255);
  handler->assertionFailed(expression, file, line);
}

void kelSetAssertCallback(KelAssertCallback callback, void* context) {
  assertCallback = callback;
  assertContext = context;
}
