// PointBlocks: shows the array of a cloud block by block where it lies.
//
// Holds the array: a cloud that needs another one leaves this one as it is.
#pragma once

#include "interfaces/IPointBlocks.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orovectorarray.h"

class PointBlocks : public IPointBlocks {
 public:
  static constexpr const char* className() { return "PointBlocks"; }
  using Offers = OroOffers<PointBlocks, IPointBlocks>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  explicit PointBlocks(OroVectorArray& points) : points_(&points) {}

  int64_t count() override { return points_->GetCount(); }
  int32_t blockCount() override;
  double* positions(int32_t block, int64_t& first, int64_t& size) override;
  uint8_t* colors() override;

 private:
  IPtr<OroVectorArray> points_;
};
