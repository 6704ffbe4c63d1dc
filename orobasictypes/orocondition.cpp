#include "orobasictypes/orocondition.h"

#include <cstdlib>

#include "platform/process.h"

namespace {

int32_t readSpinCount() {
  const auto text = platform::environment("ORO_SPIN_COUNT");
  return text ? std::atoi(text->c_str()) : -1;
}

}  // namespace

int32_t OroCondition::spinCount() {
  static const int32_t count = readSpinCount();
  return count;
}

// Holds the lock, for which it first tries as often as the spin count says.
class OroCondition::Guard {
 public:
  explicit Guard(platform::CriticalSection& lock) : lock_(lock) {
    for (int32_t tries = spinCount(); tries > 0; --tries) {
      if (lock_.tryLock()) return;
    }
    lock_.lock();
  }
  ~Guard() { lock_.unlock(); }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

 private:
  platform::CriticalSection& lock_;
};

OroCondition::OroCondition() {
  constexpr int32_t mostWaiters = 0x7fffffff;
  spinCount();
  released_.makeSemaphore(0, mostWaiters);
  done_.makeAutoResetEvent();
}

void OroCondition::wait(OroMutex& mutex) {
  {
    const Guard guard(lock_);
    ++waiters_;
  }
  if (!mutex.handle_.signalAndWait(released_)) {
    mutex.unlock();
    released_.wait();
  }
  bool isLastOfBroadcast = false;
  {
    const Guard guard(lock_);
    --waiters_;
    isLastOfBroadcast = broadcasting_ && waiters_ == 0;
  }
  if (!isLastOfBroadcast) {
    mutex.lock();
  } else if (!done_.signalAndWait(mutex.handle_)) {
    done_.setEvent();
    mutex.lock();
  }
}

void OroCondition::signal() {
  bool isAwaited = false;
  {
    const Guard guard(lock_);
    isAwaited = waiters_ > 0;
  }
  if (isAwaited) released_.releaseSemaphore(1);
}

void OroCondition::broadcast() {
  {
    const Guard guard(lock_);
    if (waiters_ < 1) return;
    broadcasting_ = true;
    released_.releaseSemaphore(waiters_);
  }
  done_.wait();
  broadcasting_ = false;
}
