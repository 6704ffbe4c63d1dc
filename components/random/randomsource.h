// RandomSource: random numbers that are the same on every system for the same seed.
//
// The generator is PCG-XSH-RR with 64 bits of state and 32 of result, as Melissa O'Neill published
// it in 2014 ("PCG: A Family of Simple Fast Space-Efficient Statistically Good Algorithms for
// Random Number Generation"), on its stream 54. Not for secrets. One user at a time; each look-up
// gives a source of its own, seeded with 0.
#pragma once

#include <cstdint>

#include "interfaces/IOroRandom.h"
#include "orobasictypes/orooffers.h"

class RandomSource : public IOroRandom {
 public:
  static constexpr const char* className() { return "RandomSource"; }
  using Offers = OroOffers<RandomSource, IOroRandom>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  RandomSource() { RandomSource::seed(0); }

  // 0 for n below 1.
  int32_t next(int32_t n) override;
  void seed(uint32_t value) override;

  // 32 random bits.
  uint32_t bits();

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

 private:
  static constexpr uint64_t kMultiplier = 6364136223846793005;
  static constexpr uint64_t kIncrement = 54 << 1 | 1;  // odd; chooses the stream

  void step() { state_ = state_ * kMultiplier + kIncrement; }

  uint64_t state_ = 0;
};
