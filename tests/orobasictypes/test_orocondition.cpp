#include "orobasictypes/orocondition.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/oroconditionvariable.h"
#include "platform/process.h"

namespace {

// So many threads that wait until they are let go, and how many went.
class Waiters {
 public:
  explicit Waiters(int count) {
    for (int i = 0; i < count; ++i) threads_.emplace_back([this] { waitOnce(); });
    untilTrue([&] { return waiting_ == count; });
  }
  ~Waiters() {
    for (std::thread& thread : threads_) thread.join();
  }

  void untilGone(int count) {
    untilTrue([&] { return gone_ == count; });
  }
  int gone() {
    const std::lock_guard hold(mutex_);
    return gone_;
  }
  // Holds the mutex, so that nobody joins.
  void broadcast() {
    const std::lock_guard hold(mutex_);
    condition_.broadcast();
  }
  void signal() {
    const std::lock_guard hold(mutex_);
    condition_.signal();
  }

 private:
  void waitOnce() {
    const std::lock_guard hold(mutex_);
    ++waiting_;
    condition_.wait(mutex_);
    ++gone_;
  }
  template <class Test>
  void untilTrue(const Test& test) {
    for (;;) {
      {
        const std::lock_guard hold(mutex_);
        if (test()) return;
      }
      std::this_thread::yield();
    }
  }

  OroMutex mutex_;
  OroCondition condition_;
  int waiting_ = 0;
  int gone_ = 0;
  std::vector<std::thread> threads_;
};

TEST(OroCondition, SignalLetsOneGo) {
  Waiters waiters(3);
  waiters.signal();
  waiters.untilGone(1);
  EXPECT_EQ(waiters.gone(), 1);
  waiters.signal();
  waiters.signal();
  waiters.untilGone(3);
}

TEST(OroCondition, BroadcastLetsAllGo) {
  for (int round = 0; round < 20; ++round) {
    Waiters waiters(4);
    waiters.broadcast();
    waiters.untilGone(4);
  }
}

TEST(OroCondition, SignalThatNobodyWaitsForIsLost) {
  OroMutex mutex;
  OroCondition condition;
  condition.signal();
  condition.broadcast();
  bool gone = false;
  mutex.lock();
  std::thread waiter([&] {
    const std::lock_guard hold(mutex);
    condition.wait(mutex);
    gone = true;
  });
  mutex.unlock();
  for (int i = 0; i < 50; ++i) std::this_thread::yield();
  {
    const std::lock_guard hold(mutex);
    EXPECT_FALSE(gone);
  }
  while (true) {
    const std::lock_guard hold(mutex);
    if (gone) break;
    condition.signal();
    mutex.unlock();
    std::this_thread::yield();
    mutex.lock();
  }
  waiter.join();
}

TEST(OroCondition, HandsWorkOver) {
  OroMutex mutex;
  OroCondition condition;
  int items = 0;
  int taken = 0;
  std::thread takers[3];
  for (std::thread& taker : takers) {
    taker = std::thread([&] {
      for (int i = 0; i < 100; ++i) {
        const std::lock_guard hold(mutex);
        while (items == 0) condition.wait(mutex);
        --items;
        ++taken;
      }
    });
  }
  for (int i = 0; i < 300; ++i) {
    const std::lock_guard hold(mutex);
    ++items;
    condition.signal();
  }
  for (std::thread& taker : takers) taker.join();
  EXPECT_EQ(taken, 300);
  EXPECT_EQ(items, 0);
}

TEST(OroCondition, SpinCountIsReadOnce) {
  const OroCondition condition;
  const int32_t count = OroCondition::spinCount();
  const auto before = platform::environment("ORO_SPIN_COUNT");
  platform::setEnvironment("ORO_SPIN_COUNT", std::to_string(count + 7));
  const OroCondition other;
  EXPECT_EQ(OroCondition::spinCount(), count);
  platform::setEnvironment("ORO_SPIN_COUNT", before);
}

TEST(OroConditionVariable, HasRoomForTheSystemsOwn) {
  OroConditionVariable first;
  OroConditionVariable second;
  EXPECT_NE(first.native(), nullptr);
  EXPECT_NE(first.native(), second.native());
}

}  // namespace
