// IExitService: ends the process at a component's word.
//
// The command-line flow needs it when the options were refused; a build without a provider ends
// with a failed assertion there.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IExitService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IExitService"; }

  // Flushes what must be flushed and ends the process with this status; does not return.
  virtual void exit(int32_t status) = 0;
};
