// SeededRandom: random numbers for thinning where no component offers a source.
//
// Equal seeds give equal numbers on every system. One user at a time.
#pragma once

#include "interfaces/IOroRandom.h"
#include "orobasictypes/orooffers.h"

class SeededRandom : public IOroRandom {
 public:
  static constexpr const char* className() { return "SeededRandom"; }
  using Offers = OroOffers<SeededRandom, IOroRandom>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t next(int32_t n) override;
  void seed(uint32_t value) override { state_ = value; }

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

 private:
  uint32_t draw();

  uint64_t state_ = 0;
};
