// IGreeter: greets by name. The interface that the hello component offers to everybody else.
#pragma once

#include "orobasictypes/iorounknown.h"

class OroString;

class IGreeter : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGreeter"; }

  virtual OroString greet(const OroString& name) = 0;
  // How many were greeted so far.
  virtual int32_t greeted() = 0;
};
