// PointHash: turns three 64-bit words into one, so that tables over points of any origin fill
// evenly.
//
// Each object draws a seed of its own: nobody can prepare a file whose points all meet in one place
// of a table. Results must not depend on the values. A plain value; any thread.
#pragma once

#include <cstdint>

class PointHash {
 public:
  PointHash();

  uint64_t operator()(uint64_t a, uint64_t b, uint64_t c) const {
    return mix(mix(mix(seed_ ^ a) + b) + c);
  }

 private:
  static uint64_t mix(uint64_t x) {
    x ^= x >> 32;
    x *= 0xE9846AF9B1A615D;
    x ^= x >> 32;
    x *= 0xD6E8FEB86659FD93;
    x ^= x >> 29;
    return x;
  }

  uint64_t seed_;
};
