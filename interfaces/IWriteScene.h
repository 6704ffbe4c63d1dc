// IWriteScene: gathers the objects of one save.
//
// Got from IFileTypeService; must offer IWriteSceneV3 as well. The flow gives the save data, asks
// which objects can be saved, hands them over, and takes the save data back. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IFileSaveData;
class IOroDocObject;

class IWriteScene : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IWriteScene"; }

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

  // What is being saved; null ends the save. The writer keeps a reference until then.
  virtual void setSaveData(IFileSaveData* saveData) = 0;

  // Whether the writer takes objects like this one.
  virtual bool canSave(IOroDocObject* object) = 0;

  // The object belongs to the save; it stays the document's.
  virtual void addObject(IOroDocObject* object) = 0;
};
