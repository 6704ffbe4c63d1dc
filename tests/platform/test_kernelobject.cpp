#include "platform/kernelobject.h"

#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "platform/clock.h"
#include "platform/process.h"
#include "platform/text.h"

namespace {

using platform::KernelObject;

TEST(KernelObject, HoldsNothingAtFirst) {
  KernelObject object;
  KernelObject other;
  ASSERT_TRUE(other.makeMutex());
  EXPECT_FALSE(object.isOpen());
  EXPECT_FALSE(object.wait(0));
  EXPECT_FALSE(object.releaseMutex());
  EXPECT_FALSE(object.releaseSemaphore(1));
  EXPECT_FALSE(object.setEvent());
  EXPECT_FALSE(object.resetEvent());
  EXPECT_FALSE(object.signalAndWait(other));
  EXPECT_FALSE(other.signalAndWait(object));
  object.close();
}

TEST(KernelObject, IsMadeOnce) {
  KernelObject object;
  EXPECT_TRUE(object.makeMutex());
  EXPECT_FALSE(object.makeMutex());
  EXPECT_FALSE(object.makeSemaphore(0, 1));
  EXPECT_FALSE(object.makeAutoResetEvent());
  EXPECT_FALSE(object.makeManualResetEvent());
  object.close();
  EXPECT_TRUE(object.makeManualResetEvent());
}

TEST(KernelObject, SemaphoreCounts) {
  KernelObject semaphore;
  EXPECT_FALSE(semaphore.makeSemaphore(2, 1));
  EXPECT_FALSE(semaphore.makeSemaphore(-1, 1));
  EXPECT_FALSE(semaphore.makeSemaphore(0, 0));
  ASSERT_TRUE(semaphore.makeSemaphore(1, 3));
  EXPECT_TRUE(semaphore.wait(0));
  EXPECT_FALSE(semaphore.wait(0));
  EXPECT_TRUE(semaphore.releaseSemaphore(3));
  EXPECT_FALSE(semaphore.releaseSemaphore(1)) << "beyond the maximum";
  EXPECT_FALSE(semaphore.releaseSemaphore(0));
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(semaphore.wait(0));
  EXPECT_FALSE(semaphore.wait(1));
  EXPECT_FALSE(semaphore.setEvent()) << "no event";
  EXPECT_FALSE(semaphore.releaseMutex());
}

TEST(KernelObject, AutoResetEventLetsOneThrough) {
  KernelObject event;
  ASSERT_TRUE(event.makeAutoResetEvent());
  EXPECT_TRUE(event.setEvent());
  EXPECT_TRUE(event.setEvent());
  EXPECT_TRUE(event.wait(0));
  EXPECT_FALSE(event.wait(0));
  EXPECT_TRUE(event.setEvent());
  EXPECT_TRUE(event.resetEvent());
  EXPECT_FALSE(event.wait(0));
}

TEST(KernelObject, ManualResetEventStays) {
  KernelObject event;
  ASSERT_TRUE(event.makeManualResetEvent());
  EXPECT_FALSE(event.wait(0));
  EXPECT_TRUE(event.setEvent());
  EXPECT_TRUE(event.wait(0));
  EXPECT_TRUE(event.wait());
  EXPECT_TRUE(event.resetEvent());
  EXPECT_FALSE(event.wait(0));
}

TEST(KernelObject, WaitEndsInTime) {
  KernelObject event;
  ASSERT_TRUE(event.makeAutoResetEvent());
  const std::int64_t start = platform::steadyNanoseconds();
  EXPECT_FALSE(event.wait(30));
  EXPECT_GE(platform::steadyNanoseconds() - start, 20000000);
}

TEST(KernelObject, SignalAndWaitDoesBoth) {
  KernelObject mutex;
  KernelObject semaphore;
  ASSERT_TRUE(mutex.makeMutex());
  ASSERT_TRUE(semaphore.makeSemaphore(0, 1));
  EXPECT_FALSE(mutex.signalAndWait(semaphore)) << "a mutex that this thread does not hold";
  ASSERT_TRUE(mutex.wait());
  bool free = false;
  std::thread other([&] {
    free = mutex.wait();  // held until the first thread waits
    mutex.releaseMutex();
    semaphore.releaseSemaphore(1);
  });
  EXPECT_TRUE(mutex.signalAndWait(semaphore));
  other.join();
  EXPECT_TRUE(free);
}

}  // namespace
