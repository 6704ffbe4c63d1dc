// PointApplication: prepares the application for a run by declaring the settings of this library.
#pragma once

#include "interfaces/IGenApp.h"
#include "orobasictypes/orooffers.h"

class PointApplication : public IGenApp {
 public:
  static constexpr const char* className() { return "PointApplication"; }
  using Offers = OroOffers<PointApplication, IGenApp>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void prepare() override;

  int32_t unusedSlot1() override { return 0; }
};

// Digits behind the point for a save: the setting "Points/Decimals" from 0 to 15, or what the
// cloud's own file had where the setting is -1, its default.
int pointDecimals(int ofCloud);
