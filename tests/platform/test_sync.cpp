#include "platform/sync.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

template <class Lock>
class Locks : public testing::Test {
 protected:
  /// tryLock on another thread, which lets go again at once.
  bool canOtherThreadLock() {
    bool locked = false;
    std::thread other([&] {
      locked = lock_.tryLock();
      if (locked) lock_.unlock();
    });
    other.join();
    return locked;
  }

  Lock lock_;
};

using AllLocks =
    testing::Types<platform::CriticalSection, platform::KernelMutex, platform::CountLock>;
TYPED_TEST_SUITE(Locks, AllLocks);

TYPED_TEST(Locks, AreNeitherCopiedNorMoved) {
  EXPECT_FALSE(std::is_copy_constructible_v<TypeParam>);
  EXPECT_FALSE(std::is_copy_assignable_v<TypeParam>);
  EXPECT_FALSE(std::is_move_constructible_v<TypeParam>);
}

TYPED_TEST(Locks, AreFreeAtFirst) { EXPECT_TRUE(this->canOtherThreadLock()); }

TYPED_TEST(Locks, KeepOthersOut) {
  const std::lock_guard guard(this->lock_);
  EXPECT_FALSE(this->canOtherThreadLock());
}

TYPED_TEST(Locks, AreFreeAfterUnlock) {
  this->lock_.lock();
  this->lock_.unlock();
  EXPECT_TRUE(this->canOtherThreadLock());
}

TYPED_TEST(Locks, LetTheirHolderInAgain) {
  this->lock_.lock();
  this->lock_.lock();
  EXPECT_TRUE(this->lock_.tryLock());
  for (int inner = 0; inner < 2; ++inner) {
    this->lock_.unlock();
    EXPECT_FALSE(this->canOtherThreadLock()) << "held until the last entry is left";
  }
  this->lock_.unlock();
  EXPECT_TRUE(this->canOtherThreadLock());
}

TYPED_TEST(Locks, WaitForAHolderThatTakesItsTime) {
  std::atomic<bool> left{false};
  this->lock_.lock();
  std::thread waiting([&] {
    this->lock_.lock();
    EXPECT_TRUE(left);
    this->lock_.unlock();
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  left = true;
  this->lock_.unlock();
  waiting.join();
}

TYPED_TEST(Locks, LetOneOfEightThreadsInAtATime) {
  constexpr int threadCount = 8;
  constexpr int rounds = 5000;
  int plain = 0;  // not atomic on purpose
  int inside = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < threadCount; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < rounds; ++i) {
        const std::lock_guard outer(this->lock_);
        const std::lock_guard inner(this->lock_);
        EXPECT_EQ(++inside, 1);
        ++plain;
        --inside;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(plain, threadCount * rounds);
}

constinit platform::CountLock lockOfTheProcess;

TEST(CountLock, NeedsNoConstructionAtStart) {
  const std::lock_guard guard(lockOfTheProcess);
  EXPECT_TRUE(lockOfTheProcess.tryLock());
  lockOfTheProcess.unlock();
}

// They all sleep while the holder stays, so each must be woken by the one before.
TEST(CountLock, LetsEachOfManySleepersIn) {
  platform::CountLock lock;
  int inside = 0;  // not atomic on purpose
  std::vector<std::thread> threads;
  lock.lock();
  for (int t = 0; t < 6; ++t) {
    threads.emplace_back([&] {
      const std::lock_guard guard(lock);
      ++inside;
    });
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  EXPECT_EQ(inside, 0);
  lock.unlock();
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(inside, 6);
}

// The holder's processor is taken away now and then within a section, as on a busy machine.
TEST(CountLock, HoldersThatStandStillLoseNoChange) {
  platform::CountLock lock;
  int plain = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 2000; ++i) {
        const std::lock_guard guard(lock);
        const int before = plain;
        if (i % 100 == 0) std::this_thread::sleep_for(std::chrono::microseconds(100));
        plain = before + 1;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(plain, 8000);
}

TEST(CountLock, ThreadsAliveHaveDifferentTokens) {
  const auto mine = platform::threadToken();
  EXPECT_NE(mine, 0u);
  EXPECT_EQ(platform::threadToken(), mine);
  std::uintptr_t others = mine;
  std::thread([&] { others = platform::threadToken(); }).join();
  EXPECT_NE(others, mine);
}

}  // namespace
