// WorldData: marks the document's "World" object, the frame that all other objects lie in.
//
// A world that the document made itself holds nothing of the user's and stays out of saved files.
#pragma once

#include "interfaces/IOroWorldData.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/orooffers.h"

class WorldData : public IOroWorldData {
 public:
  static constexpr const char* className() { return "WorldData"; }
  using Offers = OroOffers<WorldData, IOroWorldData>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // The id under which the command-line flow asks for it.
  static constexpr GUID classId() {
    return {0xACB43DF0, 0xD0AE, 0x43F8, {0xBB, 0xFE, 0x3C, 0xCB, 0xD8, 0x0C, 0x50, 0x0E}};
  }

  bool excludedFromSave() override { return true; }

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
};
