// PointCloudSink: keeps the clouds that a reader finds, until the whole file is known to be good.
//
//   PointCloudSink sink;
//   if (reader.read(bytes, sink)) sink.addTo(document, path.fileName(false));
//
// Main thread only.
#pragma once

#include <vector>

#include "components/points/formats/pointsink.h"
#include "components/points/pointclouddata.h"
#include "orobasictypes/iptr.h"

class PointDocument;

class PointCloudSink : public PointSink {
 public:
  bool beginCloud(const PointCloudHead& head) override;
  bool addPoints(const double* xyz, const PointColor* colors, size_t count) override;
  bool select(const BitVector& selection) override;
  bool endCloud(int decimals) override;

  // Whether it refused points because there is no room for them.
  bool isFull() const { return full_; }
  int64_t count() const;  // points of all clouds

  // Adds every cloud as an object. Those without a name get that of the file, the second and
  // further ones with their number behind it.
  void addTo(PointDocument& document, const OroString& fileName) const;

 private:
  PointCloud& last() { return clouds_.back()->cloud(); }

  std::vector<IPtr<PointCloudData>> clouds_;
  std::vector<OroString> names_;  // of the clouds
  bool full_ = false;
};
