#include "components/points/pointfiletype.h"

#include <initializer_list>

#include "orobasictypes/oropath.h"

PointFileType pointFileType(const OroPath& path) {
  const OroString extension = path.extension().toLower();
  for (const char* text : {"xyz", "txt", "asc"}) {
    if (extension == text) return PointFileType::text;
  }
  return PointFileType::unknown;
}
