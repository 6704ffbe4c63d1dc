// IDotNetErrorService: shows the last message of a crashing application of the other tool kit.
//
// Offered by component libraries only; asked when the registry's "App/WPF Application" is "true".
#pragma once

#include "orobasictypes/iorounknown.h"

class OroString;

class IDotNetErrorService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IDotNetErrorService"; }

  // The host passes an empty title.
  virtual void showError(const OroString& title, const OroString& text) = 0;
};
