// IGuiCursor: the mouse cursor of the user interface.
//
// In a run without a user interface the headless service answers for it, and nothing happens. Main
// thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IGuiCursor : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGuiCursor"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
};
