#include "components/points/pointclouds.h"

#include <vector>

#include "components/points/pointcloudaccess.h"
#include "components/points/pointdocument.h"
#include "orobasictypes/sptr.h"

namespace {

std::vector<PointObject*> cloudObjects() {
  std::vector<PointObject*> all;
  const SPtr<IOroDoc> service;
  auto* const document = oroQueryClass<PointDocument>(service.get());
  if (document == nullptr) return all;
  for (PointObject* object : document->objects()) {
    if (pointsOf(object) != nullptr) all.push_back(object);
  }
  return all;
}

}  // namespace

int32_t PointClouds::count() { return static_cast<int32_t>(cloudObjects().size()); }

IPointCloud* PointClouds::cloud(int32_t index) {
  const std::vector<PointObject*> objects = cloudObjects();
  if (index < 0 || index >= static_cast<int32_t>(objects.size())) return nullptr;
  return new PointCloudAccess(*objects[static_cast<size_t>(index)]);
}
