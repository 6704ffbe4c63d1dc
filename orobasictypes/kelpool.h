// kelPoolAlloc and kelPoolFree: the storage of the string classes.
//
// A block is at least as large as asked and says how large it is; keep that size as the capacity
// and hand it back. Sizes are rounded: to a multiple of 4 up to 8192 bytes, to a power of two up to
// 262144, larger ones not at all. Blocks are aligned to 8 bytes. Exhaustion never reaches the
// caller. Any thread.
//
// Behind them stands the current pool of the module: the service IBucketMemoryPool where there is
// one, until then a pool of the module's own, which hands its blocks over when the service appears.
#pragma once

#include <cstdint>

class IBucketMemoryPool;

// A block of at least `size` bytes, never null; `actual` is the size that it has. A size below 0
// counts as 0.
void* kelPoolAlloc(int32_t size, int32_t& actual);

// Takes a block back. `size` is what kelPoolAlloc reported. A size of 0 or a null pointer: nothing.
void kelPoolFree(int32_t size, void* pointer);

// The current pool, borrowed, made with the standard sizes when there is none.
IBucketMemoryPool* kelPoolInstance();

// Changes over to the service now instead of at one of the next 601 allocations. 1 when the current
// pool is, or now is, none of the module's own; else 0, and nothing changes.
int32_t kelPoolAdopt();

// Gives back what the current pool keeps and lets it go. Blocks in use stay valid; the next
// kelPoolAlloc starts anew.
void kelPoolShutdown();
