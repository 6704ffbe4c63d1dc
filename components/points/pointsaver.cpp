#include "components/points/pointsaver.h"

#include "components/points/pointdocument.h"
#include "components/points/pointfiles.h"
#include "components/points/pointwriter.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"

namespace {

// The whole document, for the types that nothing is gathered for.
std::vector<IOroDocObject*> wholeDocument() {
  SPtr<IOroDoc> service;
  const auto* document = oroQueryClass<PointDocument>(service.get());
  if (document == nullptr) return {};
  const std::vector<PointObject*> objects = document->objects();
  return {objects.begin(), objects.end()};
}

}  // namespace

bool PointSaver::save(IFileSaveData* saveData, IWriteScene* writer, int32_t, int32_t) {
  if (saveData == nullptr) return false;
  const auto type = static_cast<PointFileType>(saveData->status());
  if (type == PointFileType::native) return savePointFile(saveData->path(), type, wholeDocument());
  auto* points = oroQueryClass<PointWriter>(writer);
  return savePointFile(saveData->path(), points == nullptr ? PointFileType::unknown : type,
                       points == nullptr ? std::vector<IOroDocObject*>() : points->objects());
}
