// KelBucketStore: the blocks that a pool keeps for reuse, in buckets of one size each, and how they
// come and go. BucketMemoryPool is its face.
//
// Buckets lie one step apart up to the linear limit; above it their sizes double. A bucket is a
// stack: the block given back last is used first. A pool works under the lock of the module that
// made it. Operations ending in Held are for who holds that lock; the rest is for any thread.
#pragma once

#include <atomic>
#include <cstdint>

#include "orobasictypes/bucketmemoryallocator.h"
#include "platform/sync.h"

// What stands ahead of each block.
struct KelBucketHeader {
  BucketMemoryAllocator* allocator;
};
static_assert(sizeof(KelBucketHeader) == 8);

struct KelBucketEntry {
  uint32_t size;  // bytes
  void* block;    // what its user saw
};

struct KelBucketList {
  int32_t capacity;
  KelBucketEntry* entries;  // numbered from 1; entry 0 is never used
  int32_t count;
};

class KelBucketStore {
 public:
  // The lock of all pools that this module makes. Free of initialisation, as static strings need
  // it.
  static platform::CountLock& moduleLock() { return moduleLock_; }

  // Sizes in bytes. A maximum below 1 means that nothing is kept, and is remembered by its
  // magnitude. A step below 1 counts as 1.
  KelBucketStore(int32_t step, int32_t linearLimit, int32_t maximum);
  ~KelBucketStore();
  KelBucketStore(const KelBucketStore&) = delete;
  KelBucketStore& operator=(const KelBucketStore&) = delete;

  void* allocate(int32_t size, int32_t& actual);
  void* allocateHeld(int32_t size, int32_t& actual);
  bool release(int32_t size, void** pointer);
  // True if a block of this size is kept when it comes back.
  bool keeps(int32_t size) const { return size <= maximum_.load(std::memory_order_relaxed); }
  struct Bucket {
    int32_t index;
    int64_t size;
  };
  // The parameters never change, so this needs no lock.
  Bucket bucketOf(int32_t size) const;
  // Requires: the bucket of a size above 0 that keeps() is true for, and a block.
  void keepHeld(Bucket bucket, void* block);
  void purge();
  void setEnabled(bool enabled);

  // Takes all blocks of the other store, behind its own. The parameters are not compared: all pools
  // that meet have the standard ones. Requires: both locks.
  void takeAllHeld(KelBucketStore& other);
  bool isLikeHeld(const KelBucketStore& other) const;
  void exchangeTablesHeld(KelBucketStore& other);

  platform::CountLock& lock() const { return *lock_; }

  // Gives a block back to the heap through the allocator in its header.
  static void freeBlock(void* block);

 private:
  Bucket bucketAboveLimit(int32_t size) const;
  KelBucketList*& slotHeld(int32_t index);
  void growTableHeld(int32_t index);
  void makeRoomHeld(int32_t index);
  void putBehindHeld(int32_t index, KelBucketList* list);
  static KelBucketList* newList();
  static void freeList(KelBucketList* list);
  static void reserve(KelBucketList& list, int32_t number);
  static void* freshBlock(int64_t size, int32_t& actual);

  static platform::CountLock moduleLock_;

  // The order of the fields is the same in all modules.
  int32_t capacity_ = 0;             // of the table, in slots
  KelBucketList** table_ = nullptr;  // by bucket; null where one has not been used
  int32_t step_;                     // bytes between two buckets up to the limit
  int32_t linearLimit_;              // the largest size of these
  std::atomic<int32_t> maximum_;     // the largest size that is kept; below 1 when switched off
  platform::CountLock* lock_;        // guards the table and the lists
  int32_t shift_;                    // the step's binary logarithm; -1 where it has none
};

inline KelBucketStore::Bucket KelBucketStore::bucketOf(int32_t size) const {
  if (size > linearLimit_) return bucketAboveLimit(size);
  // Rounds towards 0, so that sizes 0 and 1 share a bucket.
  const int32_t index = size < 1 ? 0 : shift_ >= 0 ? (size - 1) >> shift_ : (size - 1) / step_;
  return {index, (int64_t{index} + 1) * step_};
}

inline KelBucketList*& KelBucketStore::slotHeld(int32_t index) {
  if (index >= capacity_) [[unlikely]]
    growTableHeld(index);
  return table_[index];
}

inline void* KelBucketStore::allocateHeld(int32_t size, int32_t& actual) {
  if (size < 0) size = 0;
  if (!keeps(size)) [[unlikely]]
    return freshBlock(size, actual);
  const Bucket bucket = bucketOf(size);
  if (KelBucketList* const list = slotHeld(bucket.index)) {
    while (list->count > 0) {
      const KelBucketEntry& entry = list->entries[list->count--];
      actual = static_cast<int32_t>(entry.size);
      if (entry.block != nullptr) [[likely]]
        return entry.block;
    }
  }
  return freshBlock(bucket.size, actual);
}

inline void KelBucketStore::keepHeld(Bucket bucket, void* block) {
  KelBucketList* list = slotHeld(bucket.index);
  if (list == nullptr || list->count + 1 >= list->capacity) [[unlikely]] {
    makeRoomHeld(bucket.index);
    list = table_[bucket.index];
  }
  list->entries[++list->count] = {static_cast<uint32_t>(bucket.size), block};
}
