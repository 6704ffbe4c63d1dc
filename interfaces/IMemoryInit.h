// IMemoryInit: the end of a memory manager, asked of the manager's own object.
//
// The host calls it once, at the end of shutDown on the main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IMemoryInit : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IMemoryInit"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;

  // Gives back what outlives the process otherwise, such as a swap file. Blocks may still be freed
  // afterwards, which must be harmless.
  virtual void end() = 0;
};
