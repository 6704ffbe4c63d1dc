#include "framework/oroobjectbroker.h"

#include <cstring>
#include <mutex>
#include <utility>

#include "framework/brokerlog.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentManager.h"
#include "interfaces/IOroObserver.h"
#include "orobasictypes/oromodule.h"

namespace {

using CreateGuard = std::lock_guard<platform::CriticalSection>;

// How large the tables are at first: the next size of the prime table is taken.
struct TableSizes {
  uint32_t classes;
  uint32_t interfaces;
  uint32_t services;
};
constexpr TableSizes kProcessSizes{299, 199, 99};
constexpr TableSizes kGroupSizes{19, 11, 7};
constexpr uint32_t kClassObjectBuckets = 17;
constexpr uint32_t kGroups = 2;
constexpr int32_t kFirstObservers = 21;

const TableSizes& sizesFor(const KelCString& groupName) {
  return groupName.isEmpty() ? kProcessSizes : kGroupSizes;
}

// Never asks with a null name, which would mean a class walk.
void query(IOroUnknown& object, const KelCString& interfaceName, void** out) {
  object.queryInterface(interfaceName.c_str(), out);
}

// A status is read after the operation that stored it, and another thread may have succeeded since:
// a failure stays one.
int32_t statusOfFailure(int32_t read) { return read != kOroBrokerDone ? read : kOroBrokerNoClass; }

// A name to keep: its literal may lie in a library that is unloaded later.
KelCString owned(const KelCString& name) { return KelCString(name.text()); }

}  // namespace

OroObjectBroker::OroObjectBroker(IOroComponentManager* manager, const KelCString& groupName)
    : classToComponent_(sizesFor(groupName).classes),
      interfaceToClass_(sizesFor(groupName).interfaces),
      services_(sizesFor(groupName).services),
      componentManager_(manager),
      observers_(kFirstObservers),
      groupName_(owned(groupName)) {
  brokerlog::openOnce();
}

OroObjectBroker::~OroObjectBroker() {
  const bool isProcessBroker = groupName_.isEmpty();
  if (isProcessBroker) brokerlog::close();
  if (groups_ != nullptr) {
    for (auto& entry : *groups_) {
      delete entry.value;
      entry.value = nullptr;  // the objects of the next group may still ask for it
    }
  }
  const auto drop = [](IOroUnknown*& slot) {
    // Out of the table first: the dying object may ask for its own name.
    if (IOroUnknown* const object = std::exchange(slot, nullptr)) object->release();
  };
  for (auto& recent : recentServices_) recent = nullptr;
  for (ServiceEntry& entry : services_) {
    entry.value.answer = nullptr;
    drop(entry.value.object);
  }
  if (classObjects_ != nullptr) {
    for (auto& entry : *classObjects_) drop(entry.value);
  }
  if (isProcessBroker) oroSetBroker(nullptr);
}

int32_t OroObjectBroker::finish(int32_t status) {
  lastStatus_.store(status, std::memory_order_relaxed);
  return status == kOroBrokerDone ? 1 : 0;
}

// --- From a name to a living object

int32_t OroObjectBroker::getService(const KelCString& interfaceName, void** out) {
  if (out == nullptr) return finish(kOroBrokerNullArgument);
  const ServiceEntry* const recent = recentService(interfaceName).load(std::memory_order_acquire);
  void* answer = nullptr;
  if (recent != nullptr && std::strcmp(recent->key.text(), interfaceName.c_str()) == 0) {
    answer = recent->value.answer.load(std::memory_order_relaxed);
  }
  if (answer == nullptr) return findOrMakeService(interfaceName, out);
  *out = answer;
  return finish(kOroBrokerDone);
}

int32_t OroObjectBroker::findOrMakeService(const KelCString& interfaceName, void** out) {
  *out = nullptr;
  int32_t status = kOroBrokerNoInterface;
  if (ServiceEntry* const service = services_.find(interfaceName)) {
    *out = interfaceOf(*service);
    const bool isRecent = *out != nullptr && !interfaceName.isEmpty();
    if (isRecent) recentService(interfaceName).store(service, std::memory_order_release);
  } else if (const auto* const standard = interfaceToClass_.find(interfaceName)) {
    const GUID classId = standard->value;
    const CreateGuard guard(createLock_);
    const bool made = createInstance(classId, interfaceName, out) == 1;
    status = made ? kOroBrokerDone : statusOfFailure(getLastStatus());
  }
  return finish(*out != nullptr ? kOroBrokerDone : status);
}

// Names are mostly literals: the one at an address is mostly the one that was there last time.
std::atomic<OroObjectBroker::ServiceEntry*>& OroObjectBroker::recentService(
    const KelCString& interfaceName) {
  const auto address = reinterpret_cast<uintptr_t>(interfaceName.text());
  return recentServices_[(address >> 3) % recentServices_.size()];
}

void* OroObjectBroker::interfaceOf(ServiceEntry& service) {
  void* found = service.value.answer.load(std::memory_order_relaxed);
  if (found == nullptr && service.value.object != nullptr) {
    query(*service.value.object, service.key, &found);
    service.value.answer.store(found, std::memory_order_relaxed);
  }
  return found;
}

int32_t OroObjectBroker::createObject(const GUID& classId, const KelCString& interfaceName,
                                      void** out) {
  if (out == nullptr) return finish(kOroBrokerNullArgument);
  GUID standard;
  ServiceEntry* const service = services_.find(interfaceName);
  if (service != nullptr && classOfInterface(interfaceName, standard) && standard == classId) {
    *out = interfaceOf(*service);
    return finish(kOroBrokerDone);  // also when the object does not answer; callers test *out
  }
  if (IOroUnknown* const object = classObject(classId)) {
    query(*object, interfaceName, out);
    return finish(kOroBrokerDone);
  }
  return createInstance(classId, interfaceName, out);
}

int32_t OroObjectBroker::createInstance(const GUID& classId, const KelCString& interfaceName,
                                        void** out) {
  if (out == nullptr) return finish(kOroBrokerNullArgument);
  const CreateGuard guard(createLock_);
  // Stored last: the reports on the way look things up here themselves.
  return finish(create(classId, interfaceName, out));
}

int32_t OroObjectBroker::create(const GUID& classId, const KelCString& interfaceName, void** out) {
  int32_t status = kOroBrokerNoClass;
  GUID componentId;
  if (!findComponent(classId, componentId, status)) return status;
  IOroComponent* component = nullptr;
  if (!componentManager_->getComponent(componentId, groupName_, &component)) {
    status = statusOfFailure(componentManager_->getLastStatus());
    report(KelCString("can't get component from id.", oroGuidText(classId).text()));
    return status;
  }
  const Answer answer = askComponent(component, classId);
  if (!answer.isObject()) {
    reportNoObject(classId, componentId);
    return answer.status;
  }
  brokerlog::write(interfaceName);
  return handOut(answer, classId, interfaceName, out);
}

// The component of the class, or false with the report of what is missing.
bool OroObjectBroker::findComponent(const GUID& classId, GUID& componentId, int32_t& status) {
  status = kOroBrokerNoClass;
  if (componentManager_ == nullptr) {
    report(KelCString::borrow("no component manager to create class instance."));
    return false;
  }
  if (const auto* const entry = classToComponent_.find(classId)) {
    componentId = entry->value;
    return true;
  }
  KelCString text("no component provides implementation of [", oroGuidText(classId).text(), "]");
  const auto name = classNames_.find(classId);
  if (name != classNames_.end()) {
    text.append(" - ");
    text.append(name->second.text());
  }
  report(text);
  return false;
}

// A component that could not be brought up is null and has no object for anything.
OroObjectBroker::Answer OroObjectBroker::askComponent(IOroComponent* component,
                                                      const GUID& classId) {
  Answer answer;
  if (component == nullptr) return answer;
  answer.status = component->getClassObject(classId, &answer.object);
  const bool claimsSuccess = answer.status == kOroBrokerDone || answer.status == kOroBrokerShared;
  if (answer.object == nullptr && claimsSuccess) answer.status = kOroBrokerNoClass;
  return answer;
}

// An object that does not answer the interface stays as it is: it may be the component's own.
int32_t OroObjectBroker::handOut(const Answer& answer, const GUID& classId,
                                 const KelCString& interfaceName, void** out) {
  query(*answer.object, interfaceName, out);
  if (*out == nullptr) {
    reportNoInterface(*answer.object, interfaceName);
    return kOroBrokerNoInterface;
  }
  GUID standard;
  if (answer.status == kOroBrokerShared && classOfInterface(interfaceName, standard) &&
      standard == classId) {
    registerService(interfaceName, answer.object);
  }
  return kOroBrokerDone;
}

bool OroObjectBroker::hasService(const KelCString& interfaceName) {
  if (ServiceEntry* const service = services_.find(interfaceName)) {
    return interfaceOf(*service) != nullptr;
  }
  GUID classId;
  return classOfInterface(interfaceName, classId) && classSupports(classId, interfaceName);
}

bool OroObjectBroker::classSupports(const GUID& classId, const KelCString& interfaceName) {
  void* found = nullptr;
  if (IOroUnknown* const object = classObject(classId)) query(*object, interfaceName, &found);
  if (found != nullptr) return true;
  const auto* const entry = classToComponent_.find(classId);
  if (componentManager_ == nullptr || entry == nullptr) return false;
  const CreateGuard guard(createLock_);
  IOroComponent* component = nullptr;
  if (!componentManager_->getComponent(entry->value, groupName_, &component)) return false;
  const Answer answer = askComponent(component, classId);
  if (answer.isObject()) query(*answer.object, interfaceName, &found);
  return found != nullptr;
}

// --- Services, interfaces and class objects

int32_t OroObjectBroker::registerService(const KelCString& interfaceName, IOroUnknown* object) {
  if (object == nullptr) return finish(kOroBrokerNullArgument);
  uint32_t index = 0;
  if (services_.find(interfaceName, &index) != nullptr) return finish(kOroBrokerAlreadyThere);
  object->addRef();
  services_.insert(index, owned(interfaceName), Service(object));
  return finish(kOroBrokerDone);
}

int32_t OroObjectBroker::registerInterface(const KelCString& interfaceName, const GUID& classId) {
  uint32_t index = 0;
  if (interfaceToClass_.find(interfaceName, &index) == nullptr) {
    interfaceToClass_.insert(index, owned(interfaceName), classId);
    return finish(kOroBrokerDone);
  }
  KelCString text("interface already registered [", interfaceName.text(), "] - ");
  text.append(componentNameOfClass(classId).text());
  report(text);
  return finish(kOroBrokerAlreadyThere);
}

int32_t OroObjectBroker::unregisterInterface(const KelCString& interfaceName) {
  const bool known = interfaceToClass_.remove(interfaceName);
  return finish(known ? kOroBrokerDone : kOroBrokerNoInterface);
}

bool OroObjectBroker::classOfInterface(const KelCString& interfaceName, GUID& out) {
  const auto* const entry = interfaceToClass_.find(interfaceName);
  if (entry != nullptr) out = entry->value;
  return entry != nullptr;
}

IOroUnknown* OroObjectBroker::classObject(const GUID& classId) const {
  if (classObjects_ == nullptr) return nullptr;
  const auto* const entry = classObjects_->find(classId);
  return entry != nullptr ? entry->value : nullptr;
}

int32_t OroObjectBroker::setClassObject(const GUID& classId, IOroUnknown* object) {
  if (classObjects_ == nullptr) {
    using Table = OroHashTable<GUID, IOroUnknown*>;
    classObjects_.reset(new Table(Table::withBuckets(kClassObjectBuckets)));
  }
  if (object != nullptr) object->addRef();  // first: it may be the one that stood there
  uint32_t index = 0;
  if (auto* const entry = classObjects_->find(classId, &index)) {
    IOroUnknown* const old = std::exchange(entry->value, object);
    if (old != nullptr) old->release();
  } else {
    classObjects_->insert(index, classId, object);
  }
  return finish(kOroBrokerDone);
}

int32_t OroObjectBroker::removeClassObject(const GUID& classId) {
  IOroUnknown* const object = classObject(classId);
  const bool known = classObjects_ != nullptr && classObjects_->remove(classId);
  if (object != nullptr) object->release();
  const int32_t status = known ? kOroBrokerDone : kOroBrokerNoClass;
  finish(status);
  return status;
}

OroObjectBroker* OroObjectBroker::groupBroker(const KelCString& groupName, bool create) {
  if (groupName.isEmpty()) return this;
  if (groups_ != nullptr) {
    if (const auto* const entry = groups_->find(groupName)) return entry->value;
  }
  if (!create) return nullptr;
  if (groups_ == nullptr) {
    groups_ = std::make_unique<OroHashTable<KelCString, OroObjectBroker*>>(kGroups);
  }
  return groups_->insert(owned(groupName), new OroObjectBroker(componentManager_, groupName))
      ->value;
}

// --- Classes

int32_t OroObjectBroker::getComponentId(const GUID& classId, GUID& out) {
  const auto* const entry = classToComponent_.find(classId);
  if (entry == nullptr) return finish(kOroBrokerNoClass);
  out = entry->value;
  return finish(kOroBrokerDone);
}

int32_t OroObjectBroker::registerClass(const GUID& classId, const GUID& componentId,
                                       const KelCStringSet& tags, const KelCString& className) {
  uint32_t index = 0;
  if (const auto* const first = classToComponent_.find(classId, &index)) {
    reportDuplicate(classId, first->value, componentId, className);
    return finish(kOroBrokerDuplicateClass);
  }
  classToComponent_.insert(index, classId, componentId);
  classNames_[classId] = owned(className);
  for (const KelCString& tag : tags) tagClasses_[owned(tag)].insert(classId);
  return finish(kOroBrokerDone);
}

int32_t OroObjectBroker::unregisterClass(const GUID& classId) {
  if (!classToComponent_.remove(classId)) return finish(kOroBrokerNoClass);
  OroArray<KelCString> lost;
  for (const auto& entry : interfaceToClass_) {
    if (entry.value == classId) lost.add(entry.key);
  }
  for (const KelCString& interfaceName : lost) unregisterInterface(interfaceName);
  // The class is gone in any case; callers want to know whether an interface lost its default.
  return finish(lost.isEmpty() ? kOroBrokerNoClass : kOroBrokerDone);
}

// --- Observers. The one attached last is left out everywhere; callers attach one more and rely
// on it.

int32_t OroObjectBroker::findObserver(const IOroObserver* observer) {
  for (int32_t i = 1; i < observers_.count(); ++i) {
    if (observers_[i] == observer) return i;
  }
  return 0;
}

void OroObjectBroker::attach(IOroObserver* observer) {
  if (findObserver(observer) == 0) observers_.add(observer);
}

void OroObjectBroker::detach(IOroObserver* observer) { observers_.remove(findObserver(observer)); }

void OroObjectBroker::notify(const KelCString& text, int32_t) {
  if (++notifyDepth_ == 1) {
    for (int32_t i = 1; i < observers_.count(); ++i) {
      if (observers_[i] != nullptr) observers_[i]->update(text, this, 0);
    }
  }
  --notifyDepth_;
}
