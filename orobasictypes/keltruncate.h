// kelTruncate: a floating point number as a 64-bit integer, the fraction dropped.
//
// Out of range, and what is no number, give the smallest integer on both systems, as the processor
// has it; the language leaves it open.
#pragma once

#include <cstdint>
#include <limits>

constexpr int64_t kelTruncate(double value) {
  constexpr double limit = 9223372036854775808.0;  // 2 to the 63
  return value >= -limit && value < limit ? static_cast<int64_t>(value)
                                          : std::numeric_limits<int64_t>::min();
}
