#include "components/points/pointobject.h"

#include <algorithm>
#include <iterator>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "orobasictypes/orostringarray.h"

int64_t PointObject::pointCount() {
  PointCloudData* const held = pointsOf(this);
  return held != nullptr ? held->cloud().count() : -1;
}

bool PointObject::pointBounds(double* minimum, double* maximum) {
  if (pointCount() <= 0) return false;
  OroVector low;
  OroVector high;
  pointsOf(this)->cloud().points().GetBounds(low, high);
  const double lows[] = {low.x, low.y, low.z};
  const double highs[] = {high.x, high.y, high.z};
  std::copy(std::begin(lows), std::end(lows), minimum);
  std::copy(std::begin(highs), std::end(highs), maximum);
  return true;
}

void PointObject::pointAttributes(OroStringArray& names) {
  if (pointCount() < 0) return;
  names.append(OroString(u"position"));
  if (pointsOf(this)->cloud().hasColors()) names.append(OroString(u"colour"));
}
