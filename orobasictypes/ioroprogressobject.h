// IOroProgressObject: a progress callback that is shared by reference count and found by its class
// name.
//
// See progresscallbackbase.h for what it does.
#pragma once

#include "orobasictypes/orooffers.h"
#include "orobasictypes/progresscallbackbase.h"

class IOroProgressObject : public ProgressCallbackBase, public virtual IOroUnknown {
 public:
  static constexpr const char* className() { return "IOroProgressObject"; }
  using Offers = OroOffers<IOroProgressObject>;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
