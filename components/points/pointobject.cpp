#include "components/points/pointobject.h"

#include <algorithm>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "orobasictypes/orostringarray.h"

int64_t PointObject::pointCount() {
  PointCloudData* const held = pointsOf(this);
  return held != nullptr ? static_cast<int64_t>(held->cloud().size()) : -1;
}

bool PointObject::pointBounds(double* minimum, double* maximum) {
  if (pointCount() <= 0) return false;
  const PointCloud& cloud = pointsOf(this)->cloud();
  const PointPosition& first = cloud.positions.front();
  PointPosition low = first;
  PointPosition high = first;
  for (const PointPosition& p : cloud.positions) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  minimum[0] = low.x, minimum[1] = low.y, minimum[2] = low.z;
  maximum[0] = high.x, maximum[1] = high.y, maximum[2] = high.z;
  return true;
}

void PointObject::pointAttributes(OroStringArray& names) {
  if (pointCount() < 0) return;
  names.append(OroString(u"position"));
  if (pointsOf(this)->cloud().hasColors()) names.append(OroString(u"colour"));
}
