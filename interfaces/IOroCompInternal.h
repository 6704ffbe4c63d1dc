// IOroCompInternal: tells a component the group that it was loaded for.
//
// A component that has it looks for services in its group's broker first.
#pragma once

#include "orobasictypes/iorounknown.h"

class KelCString;

class IOroCompInternal : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroCompInternal"; }

  // Called once, right after the component was loaded for a named group.
  virtual void setGroupName(const KelCString& name) = 0;
};
