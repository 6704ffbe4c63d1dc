// PointThinner: chooses so many of a cloud's points, no more and no fewer.
//
// Evenly: by their numbers, at equal steps. At random: each point is as likely as the others; the
// same seed chooses the same points. The numbers come from the service IOroRandom where there is
// one. One thread.
#pragma once

#include <cstdint>

class BitVector;

class PointThinner {
 public:
  // Each sets the bits of the points to keep and clears all others. `wanted` at or above `count`
  // keeps all.
  static void evenly(int64_t count, int64_t wanted, BitVector& kept);
  static void randomly(int64_t count, int64_t wanted, uint32_t seed, BitVector& kept);

  // The share of cloud k of so many points together, so that the shares add up to `wanted`.
  // `before`: the points of all clouds before it. Requires: wanted <= whole.
  static int64_t share(int64_t before, int64_t count, int64_t whole, int64_t wanted);
};
