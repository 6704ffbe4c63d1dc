// PointCloudSource: the clouds of a document as a writer takes them, with the progress of writing.
//
//   PointCloudSource source(objects);
//   writer.write(source, bytes);
//
// It borrows the objects, which must not change meanwhile. Main thread only.
#pragma once

#include <vector>

#include "components/points/formats/pointsource.h"
#include "components/points/pointcloud.h"
#include "components/points/pointprogress.h"
#include "orobasictypes/orotranslate.h"

class IOroDocObject;

class PointCloudSource : public PointSource {
 public:
  // Objects without points are passed over.
  explicit PointCloudSource(const std::vector<IOroDocObject*>& objects);

  std::span<const PointCloudHead> clouds() const override { return heads_; }
  bool points(size_t cloud, int64_t first, size_t count, double* xyz, PointColor* colors) override;
  const BitVector* selection(size_t cloud) const override { return &clouds_[cloud]->selection(); }
  void wrote(size_t count) override;

  int64_t count() const { return whole_; }
  // How many points have no colour while others have one; 0 where all or none have.
  int64_t missingColors() const;
  // How many points are selected while others are not; 0 where all or none are, which tells none
  // apart.
  int64_t selectedAmongOthers() const;

 private:
  std::vector<const PointCloud*> clouds_;
  std::vector<PointCloudHead> heads_;  // of the clouds
  PointProgress progress_{oroKey("Writing points")};
  int64_t whole_ = 0;  // points
  int64_t done_ = 0;
};
