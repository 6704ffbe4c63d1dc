// ICmdLine: the service that turns the process's options into settings.
//
// Offered by a component library; without it the flow runs on the settings as they stand. Main
// thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class ICmdLine : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ICmdLine"; }

  // Sets the settings that the options ask for; false for a refused command line, and errorText()
  // then says why. Units of a byte from 128 on are sign-extended (0xE9 is 0xFFE9).
  virtual bool parse(int32_t argc, const OroString* argv) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;

  // What was wrong with the last command line; borrowed until the next parse.
  virtual const OroString& errorText() = 0;
};
