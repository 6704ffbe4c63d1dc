// IAppCustomizer: the object through which an application adapts the host to itself.
//
// The host's own fills in the product facts when it is first asked for; nobody calls its
// operations, but their places count.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IAppCustomizer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IAppCustomizer"; }

  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;
};
