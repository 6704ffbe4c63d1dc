#include "components/points/pointdocument.h"

#include <algorithm>

#include "components/points/pointclouddata.h"
#include "components/points/pointobjectiterator.h"
#include "components/points/worlddata.h"

namespace {

constexpr int32_t kActiveObjects = 1;

}  // namespace

void PointDocument::makeDocument() {
  if (made_) return;
  made_ = true;
  add(new PointObject(OroString(u"World"), WorldData::classId(), new WorldData));
}

IOroDocObjectItr* PointDocument::objectIterator(int32_t kind, int32_t, int32_t, int32_t) {
  std::vector<PointObject*> all = objects();
  if (kind == kActiveObjects && !all.empty()) all.erase(all.begin(), all.end() - 1);
  return new PointObjectIterator(all);
}

void PointDocument::add(PointObject* object) { objects_.emplace_back(object); }

void PointDocument::remove(PointObject* object) {
  std::erase_if(objects_, [&](const IPtr<PointObject>& held) { return held.get() == object; });
}

void PointDocument::removeAll() {
  std::erase_if(objects_, [](const IPtr<PointObject>& held) {
    return held->data(WorldData::classId()) == nullptr;
  });
}

std::vector<PointObject*> PointDocument::objects() const {
  std::vector<PointObject*> all;
  for (const IPtr<PointObject>& held : objects_) all.push_back(held.get());
  return all;
}

PointCloudData* pointsOf(IOroDocObject* object) {
  return oroQueryClass<PointCloudData>(object->data(PointCloudData::classId()));
}
