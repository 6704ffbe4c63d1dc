// PointClouds: the point clouds of the document, for other components.
#pragma once

#include "interfaces/IPointClouds.h"
#include "orobasictypes/orooffers.h"

class PointClouds : public IPointClouds {
 public:
  static constexpr const char* className() { return "PointClouds"; }
  using Offers = OroOffers<PointClouds, IPointClouds>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t count() override;
  IPointCloud* cloud(int32_t index) override;
};
