#include "orobasictypes/kelpool.h"

#include <atomic>
#include <mutex>
#include <utility>

#include "interfaces/IBucketMemoryPool.h"
#include "orobasictypes/bucketmemorypool.h"
#include "orobasictypes/oromodule.h"

namespace {

using Pool = BucketMemoryPool<>;
using Guard = std::lock_guard<platform::CountLock>;

constexpr int32_t step = 4;
constexpr int32_t linearLimit = 8192;
constexpr int32_t maximum = 0x40000;
constexpr int32_t allocationsBetweenLooks = 600;

// The pool that the strings of this module use. Written under the module's lock. No initialisation
// and no end: static strings of other sources come before the one and after the other.
struct Slot {
  std::atomic<Pool*> current = nullptr;  // holds one reference
  // The same pool where another module made it. It works under that module's lock and outlives this
  // module as the service that it is, so it is used without a lock of this one.
  std::atomic<Pool*> foreign = nullptr;
  std::atomic<bool> local = false;   // current was made for want of the service
  std::atomic<int32_t> counter = 0;  // allocations from it

  void set(Pool* pool) {
    current = pool;
    const bool isForeign = pool != nullptr && &pool->buckets().lock() != &lock();
    foreign.store(isForeign ? pool : nullptr, std::memory_order_release);
  }
  bool isLookDue() const { return local && counter > allocationsBetweenLooks; }
  static platform::CountLock& lock() { return KelBucketStore::moduleLock(); }
};
constinit Slot slot;

// The lock of a pool and the one of this module, in this order.
class PoolAndModuleGuard {
 public:
  explicit PoolAndModuleGuard(Pool& pool) : pool_(pool.buckets().lock()), module_(Slot::lock()) {}

 private:
  Guard pool_;
  Guard module_;
};

// The same for the current pool, whichever it is by then.
class CurrentPoolGuard {
 public:
  CurrentPoolGuard() {
    for (;;) {
      Pool* const foreign = slot.foreign.load(std::memory_order_acquire);
      pool_ = foreign != nullptr ? &foreign->buckets().lock() : &Slot::lock();
      pool_->lock();
      Slot::lock().lock();
      if (slot.foreign == foreign) return;
      leave();
    }
  }
  ~CurrentPoolGuard() { leave(); }
  CurrentPoolGuard(const CurrentPoolGuard&) = delete;
  CurrentPoolGuard& operator=(const CurrentPoolGuard&) = delete;

 private:
  void leave() {
    Slot::lock().unlock();
    pool_->unlock();
  }

  platform::CountLock* pool_;
};

// The service, borrowed; null while there is none of the class. The broker may allocate while it
// looks: such a request finds no service.
Pool* findService() {
  static thread_local bool looking = false;
  if (looking) return nullptr;
  looking = true;
  void* service = nullptr;
  oroGetService(KelCString::borrow(IBucketMemoryPool::interfaceName()), &service);
  Pool* const pool = oroQueryClass<Pool>(static_cast<IBucketMemoryPool*>(service));
  looking = false;
  return pool;
}

// Makes the service the current pool; one of the module's own hands its blocks over.
void adopt(Pool& service) {
  Pool* old = nullptr;
  {
    const PoolAndModuleGuard guard(service);
    slot.local = false;
    old = slot.current;
    if (old == &service) return;
    service.addRef();
    if (old != nullptr) service.buckets().takeAllHeld(old->buckets());
    slot.set(&service);
  }
  if (old != nullptr) old->release();
}

void makeLocal() {
  new Pool(step, linearLimit, maximum);  // makes itself the current one
  const Guard guard(Slot::lock());
  slot.local = true;
}

// Changes over to the service when it is time to look for it, and sees to it that there is a pool.
void preparePool() {
  bool isDue = false;
  {
    const Guard guard(Slot::lock());
    isDue = slot.current != nullptr && slot.isLookDue();
    if (isDue) slot.counter = 0;  // first: the look-up may allocate
    if (slot.current != nullptr && !isDue) return;
  }
  Pool* const service = findService();
  if (service != nullptr) {
    adopt(*service);
  } else if (!isDue) {
    makeLocal();
  }
}

// Null when a pool has to be prepared first.
void* allocateFromOwn(int32_t size, int32_t& actual) {
  const Guard guard(Slot::lock());
  Pool* const pool = slot.current.load(std::memory_order_relaxed);
  if (pool == nullptr || slot.foreign.load(std::memory_order_relaxed) != nullptr ||
      slot.isLookDue()) [[unlikely]] {
    return nullptr;
  }
  void* const block = pool->buckets().allocateHeld(size, actual);
  if (slot.local) slot.counter = slot.counter + 1;
  return block;
}

}  // namespace

void kelPoolReplace(Pool& pool) {
  pool.addRef();
  Pool* old = nullptr;
  {
    const CurrentPoolGuard guard;
    old = slot.current;
    if (old != nullptr && pool.buckets().isLikeHeld(old->buckets())) {
      pool.buckets().exchangeTablesHeld(old->buckets());
    }
    slot.set(&pool);
  }
  if (old != nullptr) old->release();
}

void kelPoolForget(Pool& pool) {
  const Guard guard(Slot::lock());
  if (slot.current == &pool) slot.set(nullptr);
}

void* kelPoolAlloc(int32_t size, int32_t& actual) {
  for (;;) {
    if (Pool* const service = slot.foreign.load(std::memory_order_acquire)) {
      return service->Allocate(size, actual);
    }
    if (void* const block = allocateFromOwn(size, actual)) return block;
    preparePool();
  }
}

void kelPoolFree(int32_t size, void* pointer) {
  if (size <= 0 || pointer == nullptr) return;
  if (Pool* const service = slot.foreign.load(std::memory_order_acquire)) {
    service->Release(size, &pointer);
    return;
  }
  {
    const Guard guard(Slot::lock());
    Pool* const pool = slot.current.load(std::memory_order_relaxed);
    if (pool != nullptr && pool->buckets().keeps(size)) {
      pool->buckets().keepHeld(pool->buckets().bucketOf(size), pointer);
      return;
    }
  }
  KelBucketStore::freeBlock(pointer);
}

IBucketMemoryPool* kelPoolInstance() {
  {
    const Guard guard(Slot::lock());
    if (Pool* const pool = slot.current) return pool;
  }
  return new Pool(step, linearLimit, maximum);
}

int32_t kelPoolAdopt() {
  {
    const Guard guard(Slot::lock());
    if (slot.current != nullptr && !slot.local) return 1;
  }
  Pool* const service = findService();
  if (service == nullptr) return 0;
  adopt(*service);
  return slot.current != nullptr ? 1 : 0;
}

void kelPoolShutdown() {
  Pool* pool = nullptr;
  {
    const Guard guard(Slot::lock());
    pool = slot.current;
    slot.set(nullptr);
    slot.local = false;
    slot.counter = 0;
  }
  if (pool == nullptr) return;
  pool->Purge();
  pool->release();
}
