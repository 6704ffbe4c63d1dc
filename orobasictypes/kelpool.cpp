#include "orobasictypes/kelpool.h"

#include <algorithm>
#include <new>

#include "orobasictypes/bucketmemoryallocator.h"
#include "orobasictypes/kelrealloc.h"

namespace {

constexpr int32_t step = 4;
constexpr int32_t linearLimit = 8192;
constexpr int32_t maximum = 0x40000;

struct Header {
  BucketMemoryAllocator* allocator;
};
constexpr int32_t headerSize = 8;
static_assert(sizeof(Header) == headerSize);

// Never destroyed.
BucketMemoryAllocator& moduleAllocator() {
  alignas(BucketMemoryAllocator) static unsigned char storage[sizeof(BucketMemoryAllocator)];
  static auto* const allocator = new (storage) BucketMemoryAllocator;
  return *allocator;
}

int32_t roundedSize(int32_t size) {
  if (size > maximum) return size;
  if (size <= linearLimit) return (std::max(size, 1) + step - 1) / step * step;
  int32_t rounded = linearLimit;
  while (rounded < size) rounded *= 2;
  return rounded;
}

}  // namespace

void* kelPoolAlloc(int32_t size, int32_t& actual) {
  if (size > INT32_MAX - headerSize) kelOutOfMemory(int64_t{size} + headerSize);
  const int32_t rounded = roundedSize(size);
  void* block = nullptr;
  kelMalloc(block, 1, rounded + headerSize);
  new (block) Header{&moduleAllocator()};
  actual = rounded;
  return static_cast<char*>(block) + headerSize;
}

void kelPoolFree(int32_t size, void* pointer) {
  if (size == 0 || pointer == nullptr) return;
  auto* const header = reinterpret_cast<Header*>(static_cast<char*>(pointer) - headerSize);
  header->allocator->Free(header);
}

// Nothing is kept for reuse: each block went back to the heap when it was freed.
void kelPoolShutdown() {}
