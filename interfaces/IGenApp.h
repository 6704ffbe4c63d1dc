// IGenApp: lets the application prepare itself before the command-line flow reads any setting.
//
// Offered by a component library; skipped when absent. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IGenApp : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGenApp"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;

  // Declares the application's settings and whatever else its commands need.
  virtual void prepare() = 0;
};
