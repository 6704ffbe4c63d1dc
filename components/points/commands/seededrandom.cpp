#include "components/points/commands/seededrandom.h"

// A counter whose steps are mixed well.
uint32_t SeededRandom::draw() {
  uint64_t x = state_ += 0x9E3779B97F4A7C15;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
  return static_cast<uint32_t>((x ^ (x >> 31)) >> 32);
}

// The upper half of a product; what would favour some numbers is drawn again.
int32_t SeededRandom::next(int32_t n) {
  const auto limit = static_cast<uint32_t>(n);
  const uint32_t uneven = (0 - limit) % limit;
  for (;;) {
    const uint64_t product = uint64_t{draw()} * limit;
    if (static_cast<uint32_t>(product) >= uneven) return static_cast<int32_t>(product >> 32);
  }
}
