// OroServiceOnce<T>: a service that a module asks for once and then keeps, present or not.
//
//   static auto* const support = new OroServiceOnce<IOroStrSupport>;  // never destroyed
//   if (IOroStrSupport* service = support->get()) ...
//
// The first answer holds for good: a service that appears later is not seen. One reference is kept.
// Any thread; after the first call no lock is taken. A look-up that comes back here on its own
// thread finds nothing, so that the strings work while the service is being made.
#pragma once

#include <atomic>
#include <mutex>

#include "orobasictypes/sptr.h"
#include "platform/sync.h"

template <class T>
class OroServiceOnce {
 public:
  OroServiceOnce() = default;
  OroServiceOnce(const OroServiceOnce&) = delete;
  OroServiceOnce& operator=(const OroServiceOnce&) = delete;

  // Borrowed, or null.
  T* get() {
    if (!asked_.load(std::memory_order_acquire)) ask();
    return service_.load(std::memory_order_relaxed);
  }
  // Asks anew at the next call. For tests, while no other thread uses it.
  void reset() {
    kept_ = nullptr;
    service_ = nullptr;
    asked_ = false;
  }

 private:
  void ask() {
    std::lock_guard hold(lock_);
    if (asking_ || asked_) return;
    asking_ = true;
    kept_ = SPtr<T>();
    asking_ = false;
    service_.store(kept_.get(), std::memory_order_relaxed);
    asked_.store(true, std::memory_order_release);
  }

  std::atomic<bool> asked_ = false;    // the answer below stands
  std::atomic<T*> service_ = nullptr;  // what kept_ holds
  platform::CriticalSection lock_;     // guards what follows
  bool asking_ = false;                // the holding thread is in the look-up
  IPtr<T> kept_;
};
