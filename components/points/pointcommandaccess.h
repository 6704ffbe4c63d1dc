// PointCommandAccess: held for the length of a run so that this library is loaded and stays;
// nothing is asked of it.
#pragma once

#include "interfaces/ICommandAccess.h"
#include "orobasictypes/orooffers.h"

class PointCommandAccess : public ICommandAccess {
 public:
  static constexpr const char* className() { return "PointCommandAccess"; }
  using Offers = OroOffers<PointCommandAccess, ICommandAccess>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
