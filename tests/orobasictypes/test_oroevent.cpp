#include "orobasictypes/oroevent.h"

#include <chrono>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

#include "platform/clock.h"

namespace {

TEST(OroEvent, StaysSetUntilItIsReset) {
  OroEvent event;
  EXPECT_FALSE(event.tryWait());
  event.set();
  EXPECT_TRUE(event.tryWait());
  EXPECT_TRUE(event.tryWait());
  event.wait();
  EXPECT_TRUE(event.wait(0.5));
  event.reset();
  EXPECT_FALSE(event.tryWait());
}

TEST(OroEvent, TimedWaitLastsAtLeastAMillisecond) {
  OroEvent event;
  for (const double seconds : {0.0, 0.0009, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
    const int64_t start = platform::steadyNanoseconds();
    EXPECT_FALSE(event.wait(seconds));
    const int64_t taken = platform::steadyNanoseconds() - start;
    EXPECT_GE(taken, 500000) << seconds;  // the clocks of the two differ
    EXPECT_LT(taken, 5000000000) << seconds;
  }
}

TEST(OroEvent, VeryLongWaitDoesNotEndBeforeTheEventIsSet) {
  for (const double seconds : {5e6, 1e10, 1e300, std::numeric_limits<double>::infinity()}) {
    OroEvent event;
    std::thread setter([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      event.set();
    });
    EXPECT_TRUE(event.wait(seconds)) << seconds;
    setter.join();
  }
}

TEST(OroEvent, LetsAllWaitersThrough) {
  OroEvent event;
  std::thread threads[4];
  for (std::thread& thread : threads) {
    thread = std::thread([&] { EXPECT_TRUE(event.wait(60)); });
  }
  event.set();
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
