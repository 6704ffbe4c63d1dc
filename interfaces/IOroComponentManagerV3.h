// IOroComponentManagerV3: components that are linked into the executable.
#pragma once

#include "interfaces/IOroComponentManagerV2.h"

class IOroComponentManagerV3 : public IOroComponentManagerV2 {
 public:
  static constexpr const char* interfaceName() { return "IOroComponentManagerV3"; }

  // True: components come from the table of linked entry points and no library is loaded. False at
  // first.
  virtual void setStaticLinkage(bool flag) = 0;
  virtual bool getStaticLinkage() = 0;
};
