#include "components/points/pointobject.h"

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
  minimum[0] = low.x, minimum[1] = low.y, minimum[2] = low.z;
  maximum[0] = high.x, maximum[1] = high.y, maximum[2] = high.z;
  return true;
}

void PointObject::pointAttributes(OroStringArray& names) {
  if (pointCount() < 0) return;
  names.append(OroString(u"position"));
  if (pointsOf(this)->cloud().hasColors()) names.append(OroString(u"colour"));
}
