// The allocation layer: kelMalloc, kelRealloc and kelFree, under every long-lived buffer of the
// system, and kelAssertFail, the sink of all assertions.
//
//   double* values = nullptr;
//   int32_t capacity = 0;
//   capacity = kelRealloc(values, sizeof(double), capacity, needed, kelGrowSize(capacity, needed));
//
// A caller never tests for failure. When the heap refuses, the memory manager is asked to give
// memory back; a buffer that grows settles for less than its maximum, and in the end moves through
// a temporary file; after that the process ends as kelmemoryerror.h tells. Sizes are signed element
// counts; one block is below 2 GiB. Any thread; two threads must not reallocate one pointer at
// once.
#pragma once

#include <cstddef>
#include <cstdint>

// Makes `pointer` a new block of `count` elements of `elementSize` bytes, not cleared, whatever it
// was before. Returns `count`. An empty block is a valid one.
int64_t kelMalloc(void*& pointer, int32_t elementSize, int32_t count);

// Gives the block of `curSize` elements room for at least `minNewSize`, if possible for
// `maxNewSize` elements (-1: the same as `minNewSize`), and returns the count that it now has.
//  - curSize == minNewSize: nothing happens at all.
//  - a null pointer or curSize 0: a new block of exactly `minNewSize` elements, not cleared; an old
//    block is not freed.
//  - a maximum below curSize shrinks; a maximum of 0 frees the block and makes the pointer null. A
//    heap that refuses to shrink leaves a null pointer as well.
//  - a minimum below curSize with a larger maximum keeps the block as it is.
//  - otherwise the block grows, and what was added is zero.
int32_t kelRealloc(void*& pointer, int32_t elementSize, int32_t curSize, int32_t minNewSize,
                   int32_t maxNewSize);

// Gives the block back to the heap; null is allowed. Always 1.
int32_t kelFree(void* pointer);

template <class T>
int64_t kelMalloc(T*& pointer, int32_t elementSize, int32_t count) {
  void* block = nullptr;
  const int64_t made = kelMalloc(block, elementSize, count);
  pointer = static_cast<T*>(block);
  return made;
}

template <class T>
int32_t kelRealloc(T*& pointer, int32_t elementSize, int32_t curSize, int32_t minNewSize,
                   int32_t maxNewSize) {
  void* block = pointer;
  const int32_t size = kelRealloc(block, elementSize, curSize, minNewSize, maxNewSize);
  pointer = static_cast<T*>(block);
  return size;
}

// What the layer asks of the heap. A test replaces single calls to make the heap refuse; replace
// them while no other thread allocates.
struct KelHeapCalls {
  void* (*allocate)(size_t bytes);
  void* (*reallocate)(void* block, size_t bytes);
  void (*release)(void* block);
};
extern KelHeapCalls kelHeapCalls;

// Prints one line per allocation to standard output while it is true. For a debugger or a test.
extern bool kelTraceAllocations;

// Writes the memory record, tells the user, and ends the process with status -1: what happens when
// the heap has refused so many bytes for good. kelmemoryerror.h has it in parts.
[[noreturn]] void kelOutOfMemory(int64_t attemptedBytes);

// From here on operator new asks the memory manager for memory when the heap refuses, and ends the
// process as above instead of throwing. Of this module; of the whole process on Linux. Does nothing
// where that is so already.
void kelHelpOperatorNew();

// Looks the memory manager up now, while there is memory to load its library with.
void kelFindMemoryManager();

// Reports a failed assertion: to the callback of this module, else to the service
// IOroAssertHandlerCB; with neither the process ends with status 255. When it returns, the caller
// goes on with the values as they are.
void kelAssertFail(const char* expression, const char* file, int32_t line);

using KelAssertCallback = void (*)(void* context, const char* expression, const char* file,
                                   int32_t line);
// Each module has a callback of its own. A null function takes it away. Not guarded.
void kelSetAssertCallback(KelAssertCallback callback, void* context);
