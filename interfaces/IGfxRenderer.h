// IGfxRenderer: the drawing of a user interface, which a component may publish.
//
// Drawing is suspended while the user is told that memory has run out, and resumed afterwards.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IGfxRenderer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IGfxRenderer"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;
  virtual int32_t unusedSlot2() = 0;
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;
  virtual int32_t unusedSlot6() = 0;

  // Each suspend is followed by one resume, on the same thread.
  virtual void suspend() = 0;
  virtual void resume() = 0;
};
