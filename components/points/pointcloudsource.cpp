#include "components/points/pointcloudsource.h"

#include <algorithm>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfilework.h"

PointCloudSource::PointCloudSource(const std::vector<IOroDocObject*>& objects) {
  for (IOroDocObject* object : objects) {
    PointCloudData* const data = pointsOf(object);
    if (data == nullptr) continue;
    const PointCloud& cloud = data->cloud();
    PointCloudHead head;
    head.name = object->name();
    head.count = cloud.count();
    head.hasColors = cloud.hasColors();
    head.decimals = cloud.decimals;
    head.grid = cloud.grid;
    head.scale = cloud.points().GetScale();
    whole_ += head.count;
    clouds_.push_back(&cloud);
    heads_.push_back(std::move(head));
  }
}

bool PointCloudSource::points(size_t cloud, int64_t first, size_t count, double* xyz,
                              PointColor* colors) {
  if (PointFileWork::isCurrentStopped()) return false;
  const auto place = static_cast<int32_t>(first + 1);  // points count from 1
  clouds_[cloud]->positions(place, static_cast<int32_t>(count), xyz);
  if (colors != nullptr) clouds_[cloud]->colors(place, static_cast<int32_t>(count), colors);
  return true;
}

void PointCloudSource::wrote(size_t count) {
  done_ += static_cast<int64_t>(count);
  progress_.update(done_, whole_);
  PointFileWork::step(done_, whole_);
}

int64_t PointCloudSource::missingColors() const {
  int64_t plain = 0;
  for (const PointCloudHead& head : heads_) plain += head.hasColors ? 0 : head.count;
  return plain < whole_ ? plain : 0;
}

int64_t PointCloudSource::selectedAmongOthers() const {
  int64_t selected = 0;
  for (const PointCloud* cloud : clouds_) selected += cloud->selection().CountSet();
  return selected < whole_ ? selected : 0;
}
