// CowlApp: the host's own adapter to the application. Whoever asks for it gets the product facts
// filled in (productfacts.h); its operations do nothing.
#pragma once

#include "interfaces/IAppCustomizer.h"
#include "orobasictypes/orooffers.h"

class CowlApp : public IAppCustomizer {
 public:
  static constexpr const char* className() { return "CowlApp"; }

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

  using Offers = OroOffers<CowlApp, IAppCustomizer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
