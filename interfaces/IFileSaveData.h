// IFileSaveData: what one save is about, path and code.
//
// A new object at each request. The flow fills it in; the writer and the save service read it. Main
// thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroPath;

class IFileSaveData : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IFileSaveData"; }

  // The path that was set, borrowed.
  virtual const OroPath& path() = 0;

  virtual void setPath(const OroPath& path) = 0;

  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot3() = 0;
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;
  virtual int32_t unusedSlot6() = 0;

  // The code that was set, 0 at first.
  virtual int32_t status() = 0;

  // The code of IWriteSceneV3::prepare, or 1015 for the native file.
  virtual void setStatus(int32_t code) = 0;
};
