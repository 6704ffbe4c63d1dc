// Services that are held for the length of a run so that this library is loaded and stays: nothing
// is asked of them.
#pragma once

#include "interfaces/ICommandAccess.h"
#include "interfaces/IPrimitivesService.h"
#include "orobasictypes/orooffers.h"

class PointCommandAccess : public ICommandAccess {
 public:
  static constexpr const char* className() { return "PointCommandAccess"; }
  using Offers = OroOffers<PointCommandAccess, ICommandAccess>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

class PointPrimitives : public IPrimitivesService {
 public:
  static constexpr const char* className() { return "PointPrimitives"; }
  using Offers = OroOffers<PointPrimitives, IPrimitivesService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
