#include "platform/wordwait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int minute = 60'000;  // longer than any test may take

bool tookLessThanTheLimit(Clock::time_point start) {
  return Clock::now() - start < std::chrono::milliseconds(minute / 2);
}

TEST(WordWait, ReturnsAtOnceWhenTheWordHoldsAnotherValue) {
  const std::atomic<std::uint32_t> word{2};
  const auto start = Clock::now();
  platform::waitWhile(word, 1, minute);
  EXPECT_TRUE(tookLessThanTheLimit(start));
}

TEST(WordWait, EndsAtItsLimitWithoutAWake) {
  const std::atomic<std::uint32_t> word{1};
  const auto start = Clock::now();
  for (const int limit : {0, 1, 1020}) platform::waitWhile(word, 1, limit);
  EXPECT_TRUE(tookLessThanTheLimit(start));
}

TEST(WordWait, IsEndedByAWake) {
  std::atomic<std::uint32_t> word{1};
  std::atomic<bool> awake{false};
  const auto start = Clock::now();
  std::thread sleeper([&] {
    while (word == 1) platform::waitWhile(word, 1, minute);
    awake = true;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_FALSE(awake);
  word = 0;
  platform::wakeOne(word);
  sleeper.join();
  EXPECT_TRUE(tookLessThanTheLimit(start));
}

TEST(WordWait, WakeWithoutASleeperDoesNothing) {
  const std::atomic<std::uint32_t> word{1};
  platform::wakeOne(word);
  EXPECT_EQ(word, 1u);
}

}  // namespace
