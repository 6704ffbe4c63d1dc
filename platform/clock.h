#pragma once

// Time of day for logs, and steady time for measuring. Any thread.

#include <cstdint>

namespace platform {

/// Local time: hour 0..23, minute 0..59, second 0..60, millisecond 0..999.
struct LocalTime {
  int hour;
  int minute;
  int second;
  int millisecond;
};

LocalTime localTime();

/// Nanoseconds since some fixed moment; never goes back.
std::int64_t steadyNanoseconds();

}  // namespace platform
