#pragma once

// The three locks of the system. All are recursive for the thread that holds them, are taken
// with lock(), tryLock() and unlock(), work with std::lock_guard, and can be neither copied nor
// moved. All stay in place until the last thread is out of unlock().
// CriticalSection: the everyday lock. KernelMutex: the same over a mutex of the operating
// system, for sections that wait long. CountLock: for sections of a few instructions, such as
// the change of a reference count; never hold it across a call that may wait. One atomic
// operation while nobody else wants it; not fair: who has just left it may be the next to enter.

#include <atomic>
#include <cstdint>
#include <mutex>

#if defined(_WIN32)
#include "platform/win32/threadtoken.h"
#else
#include "platform/posix/threadtoken.h"
#endif

namespace platform {

class CriticalSection {
 public:
  CriticalSection() = default;
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

  void lock() { mutex_.lock(); }
  /// True if the lock is now held, false at once if another thread holds it.
  bool tryLock() { return mutex_.try_lock(); }
  void unlock() { mutex_.unlock(); }

 private:
  std::recursive_mutex mutex_;
};

class KernelMutex {
 public:
  KernelMutex();
  ~KernelMutex();
  KernelMutex(const KernelMutex&) = delete;
  KernelMutex& operator=(const KernelMutex&) = delete;

  /// Waits without limit.
  void lock();
  bool tryLock();
  void unlock();

 private:
  void* handle_;  // owned; what it is, is the system's business
};

class CountLock {
 public:
  constexpr CountLock() = default;
  CountLock(const CountLock&) = delete;
  CountLock& operator=(const CountLock&) = delete;

  void lock() {
    const std::uintptr_t self = threadToken();
    std::uintptr_t holder = 0;
    if (owner_.compare_exchange_strong(holder, self, std::memory_order_acquire,
                                       std::memory_order_relaxed)) [[likely]] {
      return;
    }
    if (holder == self) {
      ++depth_;
      return;
    }
    waitFor(self);
  }

  bool tryLock() {
    const std::uintptr_t self = threadToken();
    std::uintptr_t holder = 0;
    if (owner_.compare_exchange_strong(holder, self, std::memory_order_acquire,
                                       std::memory_order_relaxed)) {
      return true;
    }
    if (holder != self) return false;
    ++depth_;
    return true;
  }

  /// Requires: the calling thread holds the lock.
  void unlock() {
    if (depth_ != 0) [[unlikely]] {
      --depth_;
      return;
    }
    owner_.store(0, std::memory_order_release);
    if (sleepers_.load(std::memory_order_relaxed) != 0) [[unlikely]]
      wake();
  }

 private:
  bool tryEnter(std::uintptr_t self);
  void waitFor(std::uintptr_t self);
  void sleepFor(std::uintptr_t self);
  void wake();

  std::atomic<std::uintptr_t> owner_{0};    // token of the holding thread, 0 while free
  std::uint32_t depth_ = 0;                 // entries beyond the first; guarded by owner_
  std::atomic<std::uint32_t> sleepers_{0};  // 1 while a thread may sleep until the holder leaves
};

}  // namespace platform
