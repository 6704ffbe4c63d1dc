#include "components/points/pointfiletypes.h"

#include "components/points/pointfiletype.h"
#include "orobasictypes/oropath.h"

bool PointFileTypes::formatName(const OroPath& path, OroString& name) {
  if (pointFileType(path) != PointFileType::text) return false;
  name = OroString(u"text");
  return true;
}
