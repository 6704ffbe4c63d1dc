#include "orobasictypes/kelbucketstore.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>

#include "orobasictypes/kelgrow.h"
#include "orobasictypes/kelmemoryservices.h"
#include "orobasictypes/kelrealloc.h"

namespace {

constexpr int32_t headerSize = sizeof(KelBucketHeader);
constexpr int32_t firstListCapacity = 9;

int32_t shiftOf(int32_t step) {
  const auto bits = static_cast<uint32_t>(step);
  return std::has_single_bit(bits) ? std::countr_zero(bits) : -1;
}

}  // namespace

constinit platform::CountLock KelBucketStore::moduleLock_;

void BucketMemoryAllocator::Free(void* header) {
  const std::lock_guard hold(KelBucketStore::moduleLock());
  kelFree(header);
}

KelBucketStore::KelBucketStore(int32_t step, int32_t linearLimit, int32_t maximum)
    : step_(std::max(step, 1)),
      linearLimit_(std::max(linearLimit, 1)),
      maximum_(std::max(maximum, -INT32_MAX)),
      lock_(&moduleLock_),
      shift_(shiftOf(step_)) {
  const int32_t slots = std::min(linearLimit_ / step_, INT32_MAX - 2) + 2;
  kelMalloc(table_, sizeof *table_, slots);
  std::memset(table_, 0, static_cast<size_t>(slots) * sizeof *table_);
  capacity_ = slots;
}

KelBucketStore::~KelBucketStore() {
  purge();
  kelFree(table_);
}

KelBucketStore::Bucket KelBucketStore::bucketAboveLimit(int32_t size) const {
  Bucket bucket{(linearLimit_ - 1) / step_, linearLimit_};
  while (bucket.size < size) {
    bucket.size *= 2;
    ++bucket.index;
  }
  return bucket;
}

void* KelBucketStore::allocate(int32_t size, int32_t& actual) {
  const std::lock_guard hold(*lock_);
  return allocateHeld(size, actual);
}

bool KelBucketStore::release(int32_t size, void** pointer) {
  if (*pointer == nullptr || size <= 0) return false;
  if (keeps(size)) {
    const Bucket bucket = bucketOf(size);
    const std::lock_guard hold(*lock_);
    keepHeld(bucket, *pointer);
  } else {
    freeBlock(*pointer);
  }
  *pointer = nullptr;
  return true;
}

// A list leaves the table before its blocks are freed: their allocators take the locks of their
// modules, which are not to be waited for under this one.
void KelBucketStore::purge() {
  for (int32_t index = 0;; ++index) {
    KelBucketList* list = nullptr;
    {
      const std::lock_guard hold(*lock_);
      if (index >= capacity_) return;
      list = std::exchange(table_[index], nullptr);
    }
    if (list == nullptr) continue;
    for (int32_t i = 1; i <= list->count; ++i) {
      void* const block = std::exchange(list->entries[i].block, nullptr);
      if (block != nullptr) freeBlock(block);
    }
    freeList(list);
  }
}

void KelBucketStore::setEnabled(bool enabled) {
  const std::lock_guard hold(*lock_);
  const int32_t maximum = maximum_;
  if (enabled != (maximum > 0)) maximum_ = -maximum;
}

void KelBucketStore::takeAllHeld(KelBucketStore& other) {
  for (int32_t index = 0; index < other.capacity_; ++index) {
    if (KelBucketList* const list = std::exchange(other.table_[index], nullptr)) {
      putBehindHeld(index, list);
    }
  }
}

// A bucket without a list takes the list as it is.
void KelBucketStore::putBehindHeld(int32_t index, KelBucketList* list) {
  KelBucketList*& own = slotHeld(index);
  if (own == nullptr) {
    own = list;
    return;
  }
  for (int32_t i = 1; i <= list->count; ++i) {
    keepHeld({index, list->entries[i].size}, list->entries[i].block);
  }
  freeList(list);
}

bool KelBucketStore::isLikeHeld(const KelBucketStore& other) const {
  return step_ == other.step_ && linearLimit_ == other.linearLimit_ && maximum_ == other.maximum_;
}

void KelBucketStore::exchangeTablesHeld(KelBucketStore& other) {
  std::swap(capacity_, other.capacity_);
  std::swap(table_, other.table_);
}

// A request that the heap refuses may come back here on its own thread, for what it does to find
// room uses strings. So what grows is out of reach meanwhile, and what is kept in the meantime is
// put behind it afterwards.

void KelBucketStore::makeRoomHeld(int32_t index) {
  KelBucketList* list = std::exchange(table_[index], nullptr);
  if (list == nullptr) list = newList();
  reserve(*list, list->count + 1);
  KelBucketList* const meanwhile = std::exchange(table_[index], list);
  if (meanwhile == nullptr) return;
  putBehindHeld(index, meanwhile);
  if (table_[index]->count + 1 >= table_[index]->capacity) makeRoomHeld(index);
}

void KelBucketStore::growTableHeld(int32_t index) {
  KelBucketList** table = std::exchange(table_, nullptr);
  const int32_t before = std::exchange(capacity_, 0);
  const int32_t capacity =
      kelRealloc(table, sizeof *table, before, index + 1, kelGrowSize(before, index + 1));
  if (before == 0) std::memset(table, 0, static_cast<size_t>(capacity) * sizeof *table);
  KelBucketList** const meanwhile = std::exchange(table_, table);
  const int32_t slots = std::exchange(capacity_, capacity);
  for (int32_t i = 0; i < slots; ++i) {
    if (meanwhile[i] != nullptr) putBehindHeld(i, meanwhile[i]);
  }
  kelFree(meanwhile);
}

KelBucketList* KelBucketStore::newList() {
  KelBucketList* list = nullptr;
  kelMalloc(list, sizeof *list, 1);
  *list = {0, nullptr, 0};
  kelMalloc(list->entries, sizeof(KelBucketEntry), firstListCapacity);
  std::memset(static_cast<void*>(list->entries), 0, sizeof(KelBucketEntry) * firstListCapacity);
  list->capacity = firstListCapacity;
  return list;
}

void KelBucketStore::freeList(KelBucketList* list) {
  kelFree(list->entries);
  kelFree(list);
}

// Room for the entry of that number.
void KelBucketStore::reserve(KelBucketList& list, int32_t number) {
  if (number < list.capacity) return;
  list.capacity = kelRealloc(list.entries, sizeof(KelBucketEntry), list.capacity, number + 1,
                             kelGrowSize(list.capacity, number + 1));
}

void* KelBucketStore::freshBlock(int64_t size, int32_t& actual) {
  const int64_t bytes = size + headerSize;
  void* block = nullptr;
  if (bytes <= INT32_MAX) {
    kelMalloc(block, 1, static_cast<int32_t>(bytes));
  } else {
    // More than a count of bytes can say; refused like any block of that size.
    kelMalloc(block, headerSize, static_cast<int32_t>((bytes + headerSize - 1) / headerSize));
  }
  new (block) KelBucketHeader{&kelmemory::immortal<BucketMemoryAllocator>()};
  actual = static_cast<int32_t>(size);
  return static_cast<char*>(block) + headerSize;
}

void KelBucketStore::freeBlock(void* block) {
  auto* const header = reinterpret_cast<KelBucketHeader*>(static_cast<char*>(block) - headerSize);
  header->allocator->Free(header);
}
