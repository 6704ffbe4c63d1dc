#include "components/points/pointcloudset.h"

#include <algorithm>

#include "components/points/pointcloud.h"
#include "components/points/pointextrainfo.h"

namespace {

using Points = OroMM::VectorArray;

constexpr uint32_t kBlack = 0xFF000000;

}  // namespace

int64_t PointCloudSet::count() const { return cloud_.count(); }

// A block that was never written comes to be when it is asked for.
double* PointCloudSet::run(int64_t first, int64_t& size) {
  const auto item = static_cast<int32_t>(first + 1);
  const int32_t place = item & Points::mask;
  size = std::min<int64_t>(Points::perBlock - place, count() - first);
  Points& points = cloud_.points().Points();
  OroVector* block = points.Block(item >> Points::shift);
  if (block == nullptr) block = points.MakeBlock(item >> Points::shift);
  return &block[place].x;
}

bool PointCloudSet::hasColors() const { return cloud_.hasColors(); }

// The colour of the first point; those of the others follow.
uint32_t* PointCloudSet::packed() const {
  OroVectorArray& points = cloud_.points();
  points.SetPackedColors(true);
  return points.ExtraInfo()->GetPackedArray() + 1;
}

void PointCloudSet::setHasColors(bool wanted) {
  if (wanted == hasColors()) return;
  if (!wanted) return cloud_.dropColors();
  OroVectorArray& points = cloud_.points();
  if (points.ExtraInfo() == nullptr) points.SetExtraInfo(new PointExtraInfo);
  points.ExtraInfo()->SetCapacity(cloud_.count() + 1);
  std::fill_n(packed(), count(), kBlack);
}

void PointCloudSet::getColors(int64_t first, int64_t size, uint32_t* out) const {
  std::copy_n(packed() + first, size, out);
}

void PointCloudSet::setColors(int64_t first, int64_t size, const uint32_t* colors) {
  std::copy_n(colors, size, packed() + first);
}

// The room of points that went is given back.
void PointCloudSet::resize(int64_t count) {
  OroVectorArray& points = cloud_.points();
  const auto wanted = static_cast<int32_t>(count);
  const bool smaller = wanted < points.GetCount();
  if (!smaller) points.Reserve(wanted + 1);
  points.SetCount(wanted);
  if (smaller) points.Points().Resize(wanted + 1, false);
  if (points.HasColors()) points.ExtraInfo()->SetCount(wanted);
}

void PointCloudSet::own() { cloud_.own(); }

void PointCloudSet::coordinatesChanged() {
  cloud_.decimals = PointCloud::kShortest;
  cloud_.grid.reset();
}

BitVector& PointCloudSet::selection() { return cloud_.selection(); }
