// IInfoBar2: shows which command runs.
//
// Commands may nest; each is known by an id that its caller chooses, usually an address. Offered
// beside IInfoBar by the same object, though an info bar may lack it. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IInfoBar2 : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IInfoBar2"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;

  virtual void startCommand(const void* id, const OroString& text) = 0;

  // Ends the newest command of this id.
  virtual void stopCommand(const void* id) = 0;

  // The text of the newest command, empty when none runs.
  virtual void currentCommand(OroString& text) = 0;
};
