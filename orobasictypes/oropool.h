// OroPool<T>: objects that are made once and then handed out again and again, under a lock.
//
//   static auto* const pool = new OroPool<OroIntList>;  // never destroyed
//   OroPool<OroIntList>::Loan list(*pool, [] { return new OroIntList(41); });
//   list->Add(1);
//
// Whoever borrows one brings it back as it found it. The pool keeps all that come back. Any thread.
#pragma once

#include <cstdint>
#include <mutex>

#include "orobasictypes/kelgrow.h"
#include "orobasictypes/kelrealloc.h"
#include "platform/sync.h"

template <class T>
class OroPool {
 public:
  OroPool() = default;
  OroPool(const OroPool&) = delete;
  OroPool& operator=(const OroPool&) = delete;

  // One object for the life of this one.
  class Loan {
   public:
    template <class Make>
    Loan(OroPool& pool, const Make& make) : pool_(pool), object_(pool.take()) {
      if (object_ == nullptr) object_ = make();
    }
    ~Loan() { pool_.giveBack(object_); }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }

   private:
    OroPool& pool_;
    T* object_;
  };

 private:
  static constexpr int32_t firstRoom = 3;

  T* take() {
    const std::lock_guard hold(mutex_);
    return count_ > 0 ? objects_[--count_] : nullptr;
  }
  void giveBack(T* object) {
    const std::lock_guard hold(mutex_);
    if (count_ == capacity_) {
      const int32_t needed = capacity_ == 0 ? firstRoom : count_ + 1;
      capacity_ =
          kelRealloc(objects_, sizeof(T*), capacity_, needed, kelGrowSize(capacity_, needed));
    }
    objects_[count_++] = object;
  }

  platform::KernelMutex mutex_;  // guards what follows
  T** objects_ = nullptr;
  int32_t count_ = 0;
  int32_t capacity_ = 0;
};
