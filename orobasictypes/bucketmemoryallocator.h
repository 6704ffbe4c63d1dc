// BucketMemoryAllocator: frees the blocks of the string storage.
//
// Each block carries, in the eight bytes ahead of what its user sees, a pointer to the allocator of
// the module that made it: a string made in one module may die in another. So the two operations
// keep their order, there are no data, and a module's allocator lives as long as its last block.
// Any thread.
#pragma once

class BucketMemoryAllocator {
 public:
  virtual ~BucketMemoryAllocator() = default;
  // Takes the address of the block's header. The heap is called under the lock of the pools.
  virtual void Free(void* header);
};
