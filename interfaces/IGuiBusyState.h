// IGuiBusyState: tells the user that the program is busy, and with what.
//
// Each start is matched by a stop with the same id; a null id stands for the service itself. The
// numbered forms differ in how a user interface blocks its windows, and are one to a run without.
// Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IGuiBusyState : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGuiBusyState"; }

  virtual void startBusy(const OroString& text, int32_t flag, const void* id) = 0;

  virtual void startBusy2(const OroString& text, int32_t flag, const void* id) = 0;

  virtual void stopBusy(int32_t flag, int32_t flag2, const void* id) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;

  // Replaces the text of the newest action.
  virtual void setBusyText(const OroString& text) = 0;

  // The text of the newest action, empty when none runs.
  virtual void currentAction(OroString& text) = 0;

  virtual void startBusy3(const OroString& text, int32_t flag, const void* id) = 0;

  virtual void startBusy4(const OroString& text, int32_t flag, const void* id) = 0;

  virtual void stopBusy2(int32_t flag, int32_t flag2, const void* id) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot11() = 0;
  virtual int32_t unusedSlot12() = 0;

  // Percent from 0 to 100.
  virtual void setPercent(int32_t percent) = 0;
};
