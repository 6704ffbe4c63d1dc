#include "orobasictypes/kelrealloc.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "interfaces/IOroAssertHandlerCB.h"
#include "orobasictypes/sptr.h"
#include "platform/process.h"
#include "platform/streams.h"

namespace {

constexpr char sourceName[] = "orobasictypes/kelrealloc";

KelAssertCallback assertCallback = nullptr;
void* assertContext = nullptr;

int64_t byteSize(int32_t elementSize, int32_t count) { return int64_t{elementSize} * count; }

// Blocks end below 2 GiB: a larger or negative product becomes a size that every heap refuses.
size_t heapSize(int64_t bytes) {
  return bytes >= 0 && bytes <= INT32_MAX ? static_cast<size_t>(bytes) : size_t{PTRDIFF_MAX};
}

// One growing reallocation. When the heap refuses, `block` stays as it was.
class Growth {
 public:
  Growth(void*& block, int32_t elementSize, int32_t oldCount)
      : block_(block),
        elementSize_(elementSize),
        oldBytes_(heapSize(byteSize(elementSize, oldCount))) {}

  bool reallocate(int32_t count) {
    triedBytes_ = byteSize(elementSize_, count);
    const size_t bytes = heapSize(triedBytes_);
    void* const moved = kelHeapCalls.reallocate(block_, bytes);
    if (moved == nullptr && bytes != 0) return false;
    block_ = moved;
    if (bytes > oldBytes_) {
      std::memset(static_cast<char*>(moved) + oldBytes_, 0, bytes - oldBytes_);
    }
    return true;
  }
  int64_t triedBytes() const { return triedBytes_; }

 private:
  void*& block_;
  const int32_t elementSize_;
  const size_t oldBytes_;
  int64_t triedBytes_ = 0;
};

int32_t shrink(void*& pointer, int32_t elementSize, int32_t target) {
  if (target == 0 && pointer != nullptr) {
    kelFree(pointer);
    pointer = nullptr;
    return 0;
  }
  // Kept untested: a heap that refuses to shrink shows as a null pointer.
  pointer = kelHeapCalls.reallocate(pointer, heapSize(byteSize(elementSize, target)));
  return target;
}

// First what the caller would like, then ever less of it, halving the way down to what it needs.
int32_t grow(Growth growth, int32_t target, int32_t minNewSize) {
  if (growth.reallocate(target)) return target;
  for (int32_t pass = 7; pass >= 0 && minNewSize < target; --pass) {
    target = pass > 0 ? static_cast<int32_t>((int64_t{target} + minNewSize) >> 1) : minNewSize;
    if (growth.reallocate(target)) return target;
  }
  kelOutOfMemory(growth.triedBytes());
}

}  // namespace

bool kelTraceAllocations = false;
constinit KelHeapCalls kelHeapCalls = {std::malloc, std::realloc, std::free};

int64_t kelMalloc(void*& pointer, int32_t elementSize, int32_t count) {
  const int64_t bytes = byteSize(elementSize, count);
  if (kelTraceAllocations) {
    std::printf("kelMalloc: %d : %d : %lld\n", elementSize, count, static_cast<long long>(bytes));
  }
  pointer = kelHeapCalls.allocate(heapSize(bytes));
  if (pointer == nullptr && bytes != 0) kelOutOfMemory(bytes);
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
  if (target < minNewSize) kelAssertFail("maxNewSize >= minNewSize", sourceName, 421);
  if (kelTraceAllocations) {
    std::printf("kelRealloc: %d : %d : %d : %lld\n", elementSize, curSize, target,
                static_cast<long long>(byteSize(elementSize, target)));
  }
  if (target < curSize) return shrink(pointer, elementSize, target);
  if (minNewSize <= curSize) return curSize;
  if (target < minNewSize) {
    kelAssertFail("minNewSize > curSize && maxNewSize >= minNewSize", sourceName, 454);
  }
  return grow(Growth(pointer, elementSize, curSize), target, minNewSize);
}

int32_t kelFree(void* pointer) {
  kelHeapCalls.release(pointer);
  return 1;
}

void kelOutOfMemory(int64_t attemptedBytes) {
  char text[80];
  std::snprintf(text, sizeof text, "Out of memory: %lld bytes were refused.\n",
                static_cast<long long>(attemptedBytes));
  platform::writeStandardError(text);
  platform::endProcess(-1);
}

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
