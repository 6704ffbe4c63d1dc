// IOroComponentContainer: the component manager's hold on one component in memory.
//
// A container entered with registerContainer belongs to the manager, which deletes it when the
// component is unloaded.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroComponent;

class IOroComponentContainer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroComponentContainer"; }

  // The component, ready for use, borrowed; may be null.
  virtual IOroComponent* component() = 0;
};
