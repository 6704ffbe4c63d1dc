// IOroInitializer: work to be done once at start, by a class that the description lists.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroInitializer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroInitializer"; }

  virtual void initialize() = 0;
};
