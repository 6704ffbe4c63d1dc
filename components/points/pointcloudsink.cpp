#include "components/points/pointcloudsink.h"

#include <string>

#include "components/points/pointdocument.h"

bool PointCloudSink::beginCloud(const PointCloudHead& head) {
  clouds_.emplace_back(new PointCloudData);
  names_.push_back(head.name);
  PointCloud& cloud = last();
  cloud.grid = head.grid;
  cloud.points().SetScale(head.scale);
  if (head.count > PointCloud::kMostPoints) return !(full_ = true);
  if (head.count > 0) cloud.reserve(static_cast<int32_t>(head.count));
  return true;
}

bool PointCloudSink::addPoints(const double* xyz, const PointColor* colors, size_t count) {
  full_ = !last().add(xyz, colors, static_cast<int32_t>(count));
  return !full_;
}

bool PointCloudSink::select(const BitVector& selection) {
  last().selection() = selection;
  return true;
}

bool PointCloudSink::endCloud(int decimals) {
  last().decimals = decimals;
  return true;
}

int64_t PointCloudSink::count() const {
  int64_t all = 0;
  for (const auto& data : clouds_) all += data->cloud().count();
  return all;
}

void PointCloudSink::addTo(PointDocument& document, const OroString& fileName) const {
  int unnamed = 0;
  for (size_t i = 0; i < clouds_.size(); ++i) {
    OroString name = names_[i];
    if (name.isEmpty()) {
      name = fileName;
      if (++unnamed > 1) name.append((" " + std::to_string(unnamed)).c_str());
    }
    document.add(new PointObject(name, PointCloudData::classId(), clouds_[i].get()));
  }
}
