// IGuiStatusBar: the status bar of the user interface.
//
// In a run without a user interface the headless service answers for it. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IGuiStatusBar : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGuiStatusBar"; }

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

  // The range of the bar's progress.
  virtual void getRange(int32_t* low, int32_t* high) = 0;

  // Percent within the range.
  virtual void setProgress(int32_t percent) = 0;

  virtual bool isEnabled() = 0;
};
