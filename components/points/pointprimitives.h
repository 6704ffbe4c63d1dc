// PointPrimitives: held for the length of a run so that this library is loaded and stays; nothing
// is asked of it.
#pragma once

#include "interfaces/IPrimitivesService.h"
#include "orobasictypes/orooffers.h"

class PointPrimitives : public IPrimitivesService {
 public:
  static constexpr const char* className() { return "PointPrimitives"; }
  using Offers = OroOffers<PointPrimitives, IPrimitivesService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
