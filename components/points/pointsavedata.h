// PointSaveData: where a save goes and in which form, filled by whoever starts the save.
#pragma once

#include "interfaces/IFileSaveData.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"

class PointSaveData : public IFileSaveData {
 public:
  static constexpr const char* className() { return "PointSaveData"; }
  using Offers = OroOffers<PointSaveData, IFileSaveData>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const OroPath& path() override { return path_; }
  void setPath(const OroPath& path) override { path_ = path; }
  int32_t status() override { return status_; }
  void setStatus(int32_t code) override { status_ = code; }

  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }

 private:
  OroPath path_;
  int32_t status_ = 0;
};
