// IOroProgress: shows how far a long operation has come, and hears whether the user wants it to
// stop.
//
// Actions may nest; each is known by an id that its caller chooses, usually an address. Main
// thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IOroProgress : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroProgress"; }

  // From 0 to 1. False asks the operation to stop.
  virtual bool Update(float fraction) = 0;

  // Whether the user asked to stop.
  virtual bool IsCancelled() = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;
  virtual int32_t unusedSlot6() = 0;

  virtual void startAction(const void* id, const OroString& text) = 0;

  // Ends the newest action of this id.
  virtual void stopAction(const void* id) = 0;

  // Replaces the text of the newest action of this id.
  virtual void setAction(const void* id, const OroString& text) = 0;

  // The text of the newest action, empty when none runs.
  virtual void currentAction(OroString& text) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot11() = 0;
  virtual int32_t unusedSlot12() = 0;

  // Gives its argument back where nothing stands behind it.
  virtual int32_t resolve(int32_t value) = 0;
};
