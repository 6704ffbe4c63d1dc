#include "components/points/pointfiletype.h"

#include "orobasictypes/oropath.h"

PointFileType pointFileType(const OroPath& path) {
  return pointTypeNamed(path.extension().toUtf8());
}
