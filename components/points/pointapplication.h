// PointApplication: prepares the application for a run by declaring the settings of this library.
#pragma once

#include "components/points/formats/pointwriteoptions.h"
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

// The form of files that are saved, by the settings of this library; docs/formats/point-files.md
// tells them.
PointWriteOptions pointWriteOptions();
