// IScriptEngine: runs scripts.
//
// Must be one shared object. A failure is left as text in the setting "Python/Error String", which
// is cleared first. The setting "Python/Interrupted", an integer, is 1 behind a script that the
// user's interrupt ended, whether it failed or not: whoever has more scripts to run ends there.
// Else it is 0, or not there. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IScriptEngine : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IScriptEngine"; }

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

  // Runs the script of this file with these arguments.
  virtual void runScript(const OroString& file, const OroString& arguments) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot11() = 0;
  virtual int32_t unusedSlot12() = 0;
  virtual int32_t unusedSlot13() = 0;

  // 1: an error of the script does not stop what comes after it.
  virtual void setContinue(int32_t flag) = 0;
};
