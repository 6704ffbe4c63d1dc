// IOroSaveDoc: the service that saves the document.
//
// The flow does not look at the result: what goes wrong is reported through the error service. Main
// thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IFileSaveData;
class IWriteScene;

class IOroSaveDoc : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroSaveDoc"; }

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

  // Saves by the save data's code: below 1000 what the writer gathered, 1015 the whole document as
  // a native file, otherwise nothing. The flow passes 0 for both flags. True when the file is
  // whole.
  virtual bool save(IFileSaveData* saveData, IWriteScene* writer, int32_t flags,
                    int32_t options) = 0;
};
