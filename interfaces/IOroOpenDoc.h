// IOroOpenDoc: the service that opens a file into the document.
//
// The flow calls setMode(1), setText(0, empty) and open, in this order, and does not look at the
// result: what goes wrong is reported through the error service. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroOpenOptions;
class OroPath;
class OroString;

class IOroOpenDoc : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroOpenDoc"; }

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot1() = 0;

  // Opens the file; `options` may be null; `quiet` is 1 where nobody can be asked. True when the
  // file was read whole.
  virtual bool open(const OroPath& path, IOroOpenOptions* options, int32_t quiet) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;

  // 0: the document is emptied first, so that it holds this file alone; 1: the objects are added to
  // the document.
  virtual void setMode(int32_t mode) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot7() = 0;
  virtual int32_t unusedSlot8() = 0;
  virtual int32_t unusedSlot9() = 0;

  virtual void setText(int32_t which, const OroString& text) = 0;
};
