// IOroLog3: a log of a component library's own, which hears the broker's reports.
//
// The host has none. It must not need the broker to come to life: it is asked for during reports.
#pragma once

#include "orobasictypes/iorounknown.h"

class KelCString;

class IOroLog3 : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroLog3"; }

  virtual void log(const KelCString& text) = 0;
};
