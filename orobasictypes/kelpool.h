// kelPoolAlloc and kelPoolFree: the storage of the string classes.
//
// A block is at least as large as asked and says how large it is; keep that size as the capacity
// and hand it back. Sizes are rounded: to a multiple of 4 up to 8192 bytes, to a power of two up to
// 262144, larger ones not at all. Blocks are aligned to 8 bytes. Exhaustion never reaches the
// caller. Any thread.
#pragma once

#include <cstdint>

// A block of at least `size` bytes, never null; `actual` is the size that it has.
void* kelPoolAlloc(int32_t size, int32_t& actual);

// Takes a block back. `size` is what kelPoolAlloc reported. A size of 0 or a null pointer: nothing.
void kelPoolFree(int32_t size, void* pointer);

// Gives back what is kept for reuse. Blocks in use stay valid; the next kelPoolAlloc starts anew.
void kelPoolShutdown();
