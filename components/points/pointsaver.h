// PointSaver: carries a save out, by the code that was chosen for its file.
#pragma once

#include "interfaces/IOroSaveDoc.h"
#include "orobasictypes/orooffers.h"

class PointSaver : public IOroSaveDoc {
 public:
  static constexpr const char* className() { return "PointSaver"; }
  using Offers = OroOffers<PointSaver, IOroSaveDoc>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // False with a report when the file is not whole on the disk; an older file is then untouched.
  bool save(IFileSaveData* saveData, IWriteScene* writer, int32_t flags, int32_t options) override;

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
};
