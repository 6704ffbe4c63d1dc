// BucketMemoryPool: the class behind IBucketMemoryPool, a KelBucketStore as an object.
//
//   #include "interfaces/IBucketMemoryPool.h"
//   auto* const pool = new BucketMemoryPool(4, 8192, 0x40000);
//
// Strings reach it through kelPoolAlloc and kelPoolFree. A new pool always becomes the current one
// of its module, which takes a reference on it; it takes over the blocks of the one before when
// both have the same parameters. A template only because headers of this folder know no interface:
// whoever makes one includes that of the pool. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/kelbucketstore.h"
#include "orobasictypes/orooffers.h"

class IBucketMemoryPool;

template <class Interface = IBucketMemoryPool>
class BucketMemoryPool;

// Makes a pool that is just being made the current one.
void kelPoolReplace(BucketMemoryPool<IBucketMemoryPool>& pool);
// Says that the pool is being deleted.
void kelPoolForget(BucketMemoryPool<IBucketMemoryPool>& pool);

template <class Interface>
class BucketMemoryPool : public virtual Interface {
 public:
  static constexpr const char* className() { return "BucketMemoryPool"; }
  using Offers = OroOffers<BucketMemoryPool, Interface>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // In bytes: the distance of the small buckets, the largest size of these, and the largest size
  // that is kept at all; a maximum below 1 is one that is switched off.
  BucketMemoryPool(int32_t step, int32_t linearLimit, int32_t maximum)
      : buckets_(step, linearLimit, maximum) {
    kelPoolReplace(*this);
  }
  ~BucketMemoryPool() override { kelPoolForget(*this); }

  bool Purge() override {
    buckets_.purge();
    return true;
  }
  void* Allocate(int32_t size, int32_t& actual) override { return buckets_.allocate(size, actual); }
  bool Release(int32_t size, void** pointer) override { return buckets_.release(size, pointer); }
  bool SetEnabled(bool enabled) override {
    buckets_.setEnabled(enabled);
    return true;
  }

  KelBucketStore& buckets() { return buckets_; }

 private:
  KelBucketStore buckets_;
};
