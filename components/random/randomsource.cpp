#include "components/random/randomsource.h"

#include <bit>

void RandomSource::seed(uint32_t value) {
  state_ = 0;
  step();
  state_ += value;
  step();
}

uint32_t RandomSource::bits() {
  const uint64_t old = state_;
  step();
  const auto folded = static_cast<uint32_t>((old >> 18 ^ old) >> 27);
  return std::rotr(folded, static_cast<int>(old >> 59));
}

// 2^32 is no multiple of most ranges: the first numbers, which would come once more often than the
// others, are drawn again.
int32_t RandomSource::next(int32_t n) {
  if (n < 1) return 0;
  const auto range = static_cast<uint32_t>(n);
  const uint32_t least = -range % range;
  uint32_t drawn = bits();
  while (drawn < least) drawn = bits();
  return static_cast<int32_t>(drawn % range);
}
