// IOroNetworkService: tells whether the internal network is in reach.
//
// Asked once at start-up, on the main thread.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroNetworkService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroNetworkService"; }

  // Finds out, and leaves the answer in the setting "Network/Internal". May take a second.
  virtual bool updateNetworkState() = 0;
};
