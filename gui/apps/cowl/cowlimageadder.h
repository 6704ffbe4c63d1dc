// CowlImageAdder: puts the images that the executable carries into the image store.
#pragma once

#include "interfaces/IOroInitializer.h"
#include "orobasictypes/orooffers.h"

class CowlImageAdder : public IOroInitializer {
 public:
  static constexpr const char* className() { return "CowlImageAdder"; }

  // Adds "atelier110" and "atelier110_cowl"; nothing without an image store. A second call adds
  // them again.
  void initialize() override;

  using Offers = OroOffers<CowlImageAdder, IOroInitializer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
