#include "services/oroimagestore.h"

#include <vector>

#include "orobasictypes/iptr.h"
#include "services/oroimagecontainer.h"

namespace {

constexpr uint32_t kImageBuckets = 17;

// Clients borrow containers and hold them for as long as they like; so none ever goes, not even
// with the store.
IImageContainer* keptContainer(const void* data, uint32_t size) {
  static auto& kept = *new std::vector<IPtr<IImageContainer>>;
  auto* const container = new OroImageContainer(data, size);
  kept.emplace_back(container);
  return container;
}

}  // namespace

OroImageStore::OroImageStore()
    : images_(OroHashTable<KelCString, IImageContainer*>::withBuckets(kImageBuckets)) {}

void OroImageStore::addImage(const KelCString& name, const void* data, uint32_t size) {
  IImageContainer* const container = keptContainer(data, size);
  uint32_t bucket = 0;
  if (auto* const entry = images_.find(name, &bucket)) {
    entry->value = container;
  } else {
    images_.insert(bucket, KelCString(name.text()), container);
  }
}

IImageContainer* OroImageStore::getImage(const KelCString& name) {
  const auto* const entry = images_.find(name);
  return entry != nullptr ? entry->value : nullptr;
}

bool OroImageStore::findImage(const KelCString& name, IImageContainer** out) {
  IImageContainer* const found = getImage(name);
  if (out != nullptr) *out = found;
  return found != nullptr;
}
