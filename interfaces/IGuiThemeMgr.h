// IGuiThemeMgr: colours and texts of the user interface's theme.
//
// In a run without a user interface the headless service answers for it. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IGuiThemeMgr : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGuiThemeMgr"; }

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

  virtual bool isThemed() = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot11() = 0;
  virtual int32_t unusedSlot12() = 0;
  virtual int32_t unusedSlot13() = 0;
  virtual int32_t unusedSlot14() = 0;
  virtual int32_t unusedSlot15() = 0;

  // The text of a window's close button; kind 1 is a plain window. Empty for other kinds.
  virtual void closeText(OroString& text, int32_t kind) = 0;
};
