// ICommandRegistration: the table of the application's commands.
//
// Must be one shared object. The command-line flow calls both operations once, in this order, on
// the main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class ICommandRegistration : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ICommandRegistration"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;

  // Enters the commands.
  virtual void registerCommands() = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot3() = 0;

  // All commands are entered; the table may be completed.
  virtual void commandsRegistered() = 0;
};
