// PointCloudData: the data of a document object that holds points.
//
// Reached from IOroDocObject::data with classId(); the object holds the reference.
#pragma once

#include "components/points/pointcloud.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/orooffers.h"

class PointCloudData : public virtual IOroUnknown {
 public:
  static constexpr const char* className() { return "PointCloudData"; }
  using Offers = OroOffers<PointCloudData>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  static constexpr GUID classId() {
    return {0x9B0E0F52, 0x2C1D, 0x4A77, {0x8E, 0x31, 0x64, 0xD0, 0x5A, 0x7C, 0x1B, 0x90}};
  }

  PointCloud& cloud() { return cloud_; }

 private:
  PointCloud cloud_;
};
