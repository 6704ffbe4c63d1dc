#include "components/points/pointwriter.h"

#include "components/points/pointdocument.h"
#include "components/points/pointfiletype.h"
#include "orobasictypes/oropath.h"

int32_t PointWriter::prepare(const OroPath& path) {
  objects_.clear();
  return static_cast<int32_t>(pointFileType(path));
}

void PointWriter::setSaveData(IFileSaveData* saveData) {
  saveData_ = saveData;
  if (saveData == nullptr) objects_.clear();
}

bool PointWriter::canSave(IOroDocObject* object) {
  return object != nullptr && pointsOf(object) != nullptr;
}

void PointWriter::addObject(IOroDocObject* object) {
  if (canSave(object)) objects_.emplace_back(object);
}

std::vector<IOroDocObject*> PointWriter::objects() const {
  std::vector<IOroDocObject*> all;
  for (const IPtr<IOroDocObject>& object : objects_) all.push_back(object.get());
  return all;
}
