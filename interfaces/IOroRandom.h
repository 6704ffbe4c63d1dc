// IOroRandom: a source of random numbers that a component library may publish.
//
// Equal seeds give equal numbers, on every system. One user at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroRandom : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroRandom"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;

  // From 0 to n - 1, each as likely as the others. Requires: n > 0.
  virtual int32_t next(int32_t n) = 0;

  virtual void seed(uint32_t value) = 0;
};
