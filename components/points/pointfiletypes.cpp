#include "components/points/pointfiletypes.h"

#include "components/points/formats/pointformats.h"
#include "orobasictypes/oropath.h"

bool PointFileTypes::formatName(const OroPath& path, OroString& name) {
  const PointFormat* const format = pointFormatNamed(path.extension().toUtf8());
  if (format == nullptr) return false;
  name = OroString(format->name);
  return true;
}
