#include "orobasictypes/oromutex.h"

#include <mutex>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "platform/clock.h"
#include "platform/process.h"
#include "platform/text.h"

namespace {

// What another thread gets.
bool othersHave(OroMutex& mutex) {
  bool had = false;
  std::thread([&] {
    had = mutex.tryLock();
    if (had) mutex.unlock();
  }).join();
  return had;
}

std::u16string uniqueName(const char* stem) {
  return platform::fromSystem(stem + std::to_string(platform::processId()) +
                              std::to_string(platform::steadyNanoseconds()));
}

TEST(OroMutex, IsRecursiveAndShutsOthersOut) {
  OroMutex mutex;
  mutex.lock();
  EXPECT_TRUE(mutex.tryLock());
  mutex.unlock();
  EXPECT_FALSE(othersHave(mutex));
  mutex.unlock();
  EXPECT_TRUE(othersHave(mutex));
}

TEST(OroMutex, CanOnlyBeLeftByItsHolder) {
  OroMutex mutex;
  EXPECT_FALSE(mutex.unlockIfOpen());
  const std::lock_guard hold(mutex);
  bool left = true;
  std::thread([&] { left = mutex.unlockIfOpen(); }).join();
  EXPECT_FALSE(left);
}

TEST(OroMutex, EmptyOneGivesFalse) {
  OroMutex mutex{OroMutex::Empty()};
  EXPECT_FALSE(mutex.isOpen());
  EXPECT_FALSE(mutex.lockIfOpen());
  EXPECT_FALSE(mutex.unlockIfOpen());
  EXPECT_FALSE(mutex.tryLock());
}

TEST(OroMutex, NamedOneIsSharedByName) {
  const std::u16string name = uniqueName("oro-test-");
  OroMutex opened{OroMutex::Empty()};
  EXPECT_FALSE(opened.open(name)) << "there is none yet";
  OroMutex made{OroMutex::Empty()};
  EXPECT_TRUE(made.create(name));
  EXPECT_FALSE(made.create(name)) << "holds one already";
  EXPECT_FALSE(made.open(name));
  EXPECT_TRUE(opened.open(name));
  OroMutex again{OroMutex::Empty()};
  EXPECT_TRUE(again.create(name)) << "opens what is there";
  EXPECT_TRUE(made.lockIfOpen());
  EXPECT_FALSE(othersHave(opened));
  EXPECT_TRUE(opened.tryLock());
  EXPECT_TRUE(opened.unlockIfOpen());
  EXPECT_TRUE(made.unlockIfOpen());
  EXPECT_TRUE(othersHave(again));
}

TEST(OroMutex, NameIsFreeWhenAllHaveClosed) {
  const std::u16string name = uniqueName("oro-gone-");
  OroMutex made{OroMutex::Empty()};
  EXPECT_TRUE(made.create(name));
  made.close();
  EXPECT_FALSE(made.isOpen());
  EXPECT_FALSE(made.open(name));
}

TEST(OroMutex, ThreadsExcludeEachOther) {
  OroMutex mutex;
  int count = 0;
  std::thread threads[4];
  for (std::thread& thread : threads) {
    thread = std::thread([&] {
      for (int i = 0; i < 500; ++i) {
        const std::lock_guard hold(mutex);
        ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 2000);
}

}  // namespace
