// PointWriter: gathers the objects whose points a save writes to one file.
//
// prepare() chooses the form, addObject() gathers. setSaveData(null) ends the save and lets the
// objects go. Main thread only.
#pragma once

#include <vector>

#include "interfaces/IFileSaveData.h"
#include "interfaces/IOroDocObject.h"
#include "interfaces/IWriteScene.h"
#include "interfaces/IWriteSceneV3.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"

class PointWriter : public IWriteScene, public IWriteSceneV3 {
 public:
  static constexpr const char* className() { return "PointWriter"; }
  using Offers = OroOffers<PointWriter, IWriteScene, IWriteSceneV3>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t prepare(const OroPath& path) override;
  void setSaveData(IFileSaveData* saveData) override;
  bool canSave(IOroDocObject* object) override;
  void addObject(IOroDocObject* object) override;

  // What was gathered, in order, borrowed.
  std::vector<IOroDocObject*> objects() const;

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  int32_t unusedSlot7() override { return 0; }
  int32_t unusedSlot8() override { return 0; }
  int32_t unusedSlot9() override { return 0; }
  int32_t unusedSlot10() override { return 0; }
  int32_t unusedSlot11() override { return 0; }

 private:
  IPtr<IFileSaveData> saveData_;
  std::vector<IPtr<IOroDocObject>> objects_;
};
