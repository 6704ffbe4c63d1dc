// IBucketMemoryPool: blocks for text, kept for reuse. The process has one, which every module's
// strings take their storage from.
//
// Blocks are trusted: nothing checks that a size fits its block. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IBucketMemoryPool : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IBucketMemoryPool"; }

  // Gives all blocks that are kept back to the heap. Always true.
  virtual bool Purge() = 0;
  // A block of at least `size` bytes, never null; `actual` is the size that it has. A size below 0
  // counts as 0.
  virtual void* Allocate(int32_t size, int32_t& actual) = 0;
  // Takes a block back and makes the caller's pointer null. `size` is what Allocate reported. A
  // null pointer or a size of 0: false, and nothing changes.
  virtual bool Release(int32_t size, void** pointer) = 0;
  // While it is off, nothing more is kept: blocks come from the heap and go back to it, and those
  // kept before stay until Purge. Always true. Blocks taken while it is off have just the size
  // asked for and are to come back before it is on again.
  virtual bool SetEnabled(bool enabled) = 0;
};
