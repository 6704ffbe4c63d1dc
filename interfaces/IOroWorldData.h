// IOroWorldData: the data of the document object named "World".
//
// Class id {ACB43DF0-D0AE-43F8-BBFE-3CCBD80C500E}. Asked when a document is saved. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroWorldData : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroWorldData"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;
  virtual int32_t unusedSlot6() = 0;
  virtual int32_t unusedSlot7() = 0;
  virtual int32_t unusedSlot8() = 0;
  virtual int32_t unusedSlot9() = 0;
  virtual int32_t unusedSlot10() = 0;
  virtual int32_t unusedSlot11() = 0;

  // True keeps the object out of saved files: it holds nothing that the user made.
  virtual bool excludedFromSave() = 0;
};
