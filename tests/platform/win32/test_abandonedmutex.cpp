// A thread that ends without leaving a mutex must not stop the others for ever.

#include <gtest/gtest.h>

#include <thread>

#include "platform/sync.h"

namespace {

TEST(KernelMutexOfWindows, IsTakenOverFromAThreadThatEnded) {
  platform::KernelMutex mutex;
  std::thread([&] { mutex.lock(); }).join();
  EXPECT_TRUE(mutex.tryLock());
  mutex.unlock();
}

}  // namespace
