#include "components/points/pointsaver.h"

#include "components/points/pointfiletype.h"
#include "components/points/pointreport.h"
#include "components/points/pointwriter.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"

bool PointSaver::save(IFileSaveData* saveData, IWriteScene* writer, int32_t, int32_t) {
  if (saveData == nullptr) return false;
  auto* points = oroQueryClass<PointWriter>(writer);
  if (points != nullptr && saveData->status() == static_cast<int32_t>(PointFileType::text)) {
    return points->write(saveData->path());
  }
  reportPoints(1, "The type of the file %1 cannot be saved", oroShownPath(saveData->path()));
  return false;
}
