// IMainApplication: the application proper, as far as the host asks it.
//
// Offered by component libraries only; absent in a command-line run.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IMainApplication : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IMainApplication"; }

  // The host calls the fifth operation alone; the others keep its place.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  // True when a crash is to end the process without a message.
  virtual bool endsSilently() = 0;
};
