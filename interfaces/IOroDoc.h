// IOroDoc: the service that is the application's document.
//
// Must be one shared object: the flow asks for it at more than one place. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDocObjectItr;

class IOroDoc : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDoc"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;

  // Makes the document, empty. A second call leaves the document alone.
  virtual void makeDocument() = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;
  virtual int32_t unusedSlot6() = 0;
  virtual int32_t unusedSlot7() = 0;
  virtual int32_t unusedSlot8() = 0;
  virtual int32_t unusedSlot9() = 0;
  virtual int32_t unusedSlot10() = 0;
  virtual int32_t unusedSlot11() = 0;
  virtual int32_t unusedSlot12() = 0;
  virtual int32_t unusedSlot13() = 0;
  virtual int32_t unusedSlot14() = 0;
  virtual int32_t unusedSlot15() = 0;
  virtual int32_t unusedSlot16() = 0;
  virtual int32_t unusedSlot17() = 0;
  virtual int32_t unusedSlot18() = 0;
  virtual int32_t unusedSlot19() = 0;
  virtual int32_t unusedSlot20() = 0;
  virtual int32_t unusedSlot21() = 0;
  virtual int32_t unusedSlot22() = 0;
  virtual int32_t unusedSlot23() = 0;
  virtual int32_t unusedSlot24() = 0;
  virtual int32_t unusedSlot25() = 0;
  virtual int32_t unusedSlot26() = 0;
  virtual int32_t unusedSlot27() = 0;
  virtual int32_t unusedSlot28() = 0;
  virtual int32_t unusedSlot29() = 0;
  virtual int32_t unusedSlot30() = 0;
  virtual int32_t unusedSlot31() = 0;
  virtual int32_t unusedSlot32() = 0;
  virtual int32_t unusedSlot33() = 0;
  virtual int32_t unusedSlot34() = 0;
  virtual int32_t unusedSlot35() = 0;
  virtual int32_t unusedSlot36() = 0;
  virtual int32_t unusedSlot37() = 0;

  // A walk over the document's objects; new, with a count of 0. The flow passes (2, 0, 0, 0): all
  // objects, in their order. Kind 1: the active objects alone.
  virtual IOroDocObjectItr* objectIterator(int32_t kind, int32_t first, int32_t last,
                                           int32_t flags) = 0;
};
