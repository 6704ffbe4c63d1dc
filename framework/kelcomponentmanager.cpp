#include "framework/kelcomponentmanager.h"

#include <mutex>
#include <vector>

#include "framework/mapentry.h"
#include "interfaces/IOroCompInternal.h"
#include "interfaces/IOroComponent.h"

namespace {

// Entries that did not come up. Their libraries stay open, since code of theirs may have been
// handed out already; so they are kept for good, and each request tries anew.
void abandon(mapEntry* entry) {
  static platform::CriticalSection& lock = *new platform::CriticalSection;
  static std::vector<mapEntry*>& abandoned = *new std::vector<mapEntry*>;
  const std::lock_guard guard(lock);
  abandoned.push_back(entry);
}

// Enters or replaces.
template <class Table, class Value>
void put(Table& table, const GUID& id, const Value& value) {
  uint32_t index = 0;
  if (auto* const entry = table.find(id, &index)) {
    entry->value = value;
  } else {
    table.insert(index, id, value);
  }
}

}  // namespace

KelComponentManager::Group::~Group() {
  for (auto& entry : containers) delete static_cast<IOroUnknown*>(entry.value);
}

KelComponentManager::~KelComponentManager() {
  if (groups_ == nullptr) return;
  for (auto& entry : *groups_) delete entry.value;
}

bool KelComponentManager::finish(int32_t status) {
  lastStatus_.store(status, std::memory_order_relaxed);
  return status == kOroComponentDone;
}

KelComponentManager::Group* KelComponentManager::findGroup(const KelCString& groupName) {
  if (groupName.isEmpty()) return &defaultGroup_;
  const auto* const entry = groups_ != nullptr ? groups_->find(groupName) : nullptr;
  return entry != nullptr ? entry->value : nullptr;
}

KelComponentManager::Group& KelComponentManager::makeGroup(const KelCString& groupName) {
  if (Group* const group = findGroup(groupName)) return *group;
  if (groups_ == nullptr) groups_ = std::make_unique<OroHashTable<KelCString, Group*>>(kGroups);
  return *groups_->insert(KelCString(groupName.text()), new Group(kNamedSizes))->value;
}

// --- Components in memory

bool KelComponentManager::getComponent(const GUID& componentId, const KelCString& groupName,
                                       IOroComponent** out) {
  if (out == nullptr) return finish(kOroComponentNullArgument);
  const std::lock_guard guard(mutex_);
  Group* const group = findGroup(groupName);
  if (group == nullptr) return finish(kOroComponentNotFound);
  IOroComponent* found = nullptr;
  const int32_t status = provide(*group, componentId, groupName, found);
  if (found != nullptr) *out = found;
  return finish(status);
}

// The component in memory, or loaded now. A library that does not come up is a success without a
// component; callers test the pointer.
int32_t KelComponentManager::provide(Group& group, const GUID& componentId,
                                     const KelCString& groupName, IOroComponent*& found) {
  if (const auto* const entry = group.containers.find(componentId)) {
    found = entry->value->component();
    return kOroComponentDone;
  }
  const auto* const path = group.libraryPaths.find(componentId);
  if (path == nullptr) return kOroComponentNotFound;
  auto* const entry = new mapEntry(path->value, *this, broker_);
  if (!entry->isLoaded()) {
    abandon(entry);
    return kOroComponentDone;
  }
  group.containers.insert(componentId, entry);
  found = entry->component();
  auto* const internal = groupName.isEmpty() ? nullptr : oroQuery<IOroCompInternal>(found);
  if (internal != nullptr) internal->setGroupName(groupName);
  return kOroComponentDone;
}

bool KelComponentManager::registerContainer(const GUID& componentId, const KelCString& groupName,
                                            IOroComponentContainer* container) {
  if (container == nullptr) return finish(kOroComponentNullArgument);
  Group* const group = findGroup(groupName);
  if (group == nullptr) return finish(kOroComponentNotFound);
  uint32_t index = 0;
  if (group->containers.find(componentId, &index) != nullptr) {
    return finish(kOroComponentAlreadyThere);
  }
  group->containers.insert(index, componentId, container);
  return finish(kOroComponentDone);
}

bool KelComponentManager::unloadComponent(const GUID& componentId, const KelCString& groupName) {
  Group* const group = findGroup(groupName);
  const auto* const entry = group != nullptr ? group->containers.find(componentId) : nullptr;
  if (entry == nullptr) return finish(kOroComponentNotFound);
  IOroComponentContainer* const container = entry->value;
  group->containers.remove(componentId);
  delete static_cast<IOroUnknown*>(container);
  return finish(kOroComponentDone);
}

void KelComponentManager::shutDownComponents() {
  if (groups_ != nullptr) {
    for (auto& entry : *groups_) shutDownGroup(*entry.value);
  }
  shutDownGroup(defaultGroup_);
}

// Components may load or unload others while they end, so each is looked up when its turn comes.
void KelComponentManager::shutDownGroup(Group& group) {
  std::vector<GUID> ids;
  for (const auto& entry : group.containers) ids.push_back(entry.key);
  for (const GUID& id : ids) {
    const auto* const entry = group.containers.find(id);
    IOroComponent* const component = entry != nullptr ? entry->value->component() : nullptr;
    if (component != nullptr) component->shutDown();
  }
}

// --- What is known of components

int32_t KelComponentManager::registerComponent(const OroString& libraryPath,
                                               const GUID& componentId,
                                               const KelCString& componentName,
                                               const KelCString& groupName) {
  Group& group = makeGroup(groupName);
  put(group.libraryPaths, componentId, libraryPath);
  put(group.componentNames, componentId, KelCString(componentName.text()));
  finish(kOroComponentDone);
  return 1;
}

int32_t KelComponentManager::setLibraryPath(const GUID& componentId, const KelCString& groupName,
                                            const OroString& path) {
  put(makeGroup(groupName).libraryPaths, componentId, path);
  finish(kOroComponentDone);
  return 1;
}

bool KelComponentManager::getLibraryPath(const GUID& componentId, const KelCString& groupName,
                                         OroString& out) {
  const Group* const group = findGroup(groupName);
  const auto* const entry = group != nullptr ? group->libraryPaths.find(componentId) : nullptr;
  if (entry == nullptr) return finish(kOroComponentNotFound);
  out = entry->value;
  return finish(kOroComponentDone);
}

bool KelComponentManager::getComponentName(const GUID& componentId, const KelCString& groupName,
                                           KelCString& out) {
  const Group* const group = findGroup(groupName);
  const auto* const entry = group != nullptr ? group->componentNames.find(componentId) : nullptr;
  if (entry == nullptr) return finish(kOroComponentNotFound);
  out = entry->value;
  return finish(kOroComponentDone);
}
