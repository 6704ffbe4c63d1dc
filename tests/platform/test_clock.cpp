#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <thread>

namespace {

TEST(Clock, LocalTimeIsThatOfTheSystem) {
  constexpr int day = 24 * 60 * 60;
  const std::time_t now = std::time(nullptr);
  const std::tm expected = *std::localtime(&now);
  const platform::LocalTime time = platform::localTime();
  const int difference = (time.hour - expected.tm_hour) * 3600 +
                         (time.minute - expected.tm_min) * 60 + time.second - expected.tm_sec;
  EXPECT_LE(std::abs(difference) % day, 5);
  EXPECT_GE(time.millisecond, 0);
  EXPECT_LE(time.millisecond, 999);
}

TEST(Clock, SteadyTimeAdvancesByWhatPasses) {
  const auto before = platform::steadyNanoseconds();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_GE(platform::steadyNanoseconds() - before, 15'000'000);
}

}  // namespace
