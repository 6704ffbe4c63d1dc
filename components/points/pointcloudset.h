// PointCloudSet: a cloud of the document as the commands work on it.
//
// Borrows the cloud for its life. See PointSet for the rest.
#pragma once

#include "components/points/commands/pointset.h"

class PointCloud;

class PointCloudSet : public PointSet {
 public:
  explicit PointCloudSet(PointCloud& cloud) : cloud_(cloud) {}

  int64_t count() const override;
  double* run(int64_t first, int64_t& size) override;
  bool hasColors() const override;
  void setHasColors(bool wanted) override;
  void getColors(int64_t first, int64_t size, uint32_t* out) const override;
  void setColors(int64_t first, int64_t size, const uint32_t* colors) override;
  void resize(int64_t count) override;
  void own() override;
  void coordinatesChanged() override;
  BitVector& selection() override;

 private:
  uint32_t* packed() const;

  PointCloud& cloud_;
};
