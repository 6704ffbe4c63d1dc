// IFileTypeService: knows the file formats.
//
// Must be one shared object. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IWriteScene;

class IFileTypeService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IFileTypeService"; }

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
  virtual int32_t unusedSlot11() = 0;
  virtual int32_t unusedSlot12() = 0;
  virtual int32_t unusedSlot13() = 0;
  virtual int32_t unusedSlot14() = 0;

  // The writer for the next save, borrowed: hold it while it is used. Null when there is none.
  virtual IWriteScene* writerFor() = 0;
};
