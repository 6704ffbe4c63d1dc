// FakeBroker: a broker of this process for the life of this object, without components.
//
//   tests::FakeBroker broker;
//   broker.registerService(KelCString::borrow("IThing"), &thing);
//
// It publishes objects by name, gives one object for each class id (setClassObject), counts under a
// lock as the real one does, and tells how often it was asked. It holds a reference on what it was
// given and drops it when it goes, after which there is no broker.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "interfaces/IOroObjBroker.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/oromodule.h"
#include "platform/sync.h"

namespace tests {

class FakeBroker : public IOroObjBroker {
 public:
  FakeBroker() { oroSetBroker(this); }
  ~FakeBroker() override {
    services_.clear();
    classObjects_.clear();
    if (oroBroker() == this) oroSetBroker(nullptr);
  }
  FakeBroker(const FakeBroker&) = delete;
  FakeBroker& operator=(const FakeBroker&) = delete;

  // A broker of its own for the group, which groupBroker then finds.
  FakeBroker& addGroup(const std::string& name) {
    groups_[name].reset(new FakeBroker(Group()));
    return *groups_[name];
  }

  int serviceRequests = 0;  // calls of getService
  int objectRequests = 0;   // calls of createObject
  int countChanges = 0;     // calls of countUp and countDown

  int32_t createObject(const GUID& classId, const KelCString& interfaceName, void** out) override {
    ++objectRequests;
    auto* const entry = classObjects_.find(classId);
    if (entry == nullptr || !entry->value) return done(kOroBrokerNoClass);
    entry->value.object()->queryInterface(interfaceName.text(), out);
    return done(kOroBrokerDone);
  }
  int32_t getComponentId(const GUID&, GUID&) override { return done(kOroBrokerNoClass); }
  int32_t registerService(const KelCString& interfaceName, IOroUnknown* object) override {
    if (object == nullptr) return done(kOroBrokerNullArgument);
    uint32_t index = 0;
    if (services_.find(interfaceName, &index) != nullptr) return done(kOroBrokerAlreadyThere);
    services_.insert(index, interfaceName, object);
    return done(kOroBrokerDone);
  }
  int32_t registerInterface(const KelCString&, const GUID&) override {
    return done(kOroBrokerNoClass);
  }
  int32_t unregisterInterface(const KelCString&) override { return done(kOroBrokerNoInterface); }
  int32_t getService(const KelCString& interfaceName, void** out) override {
    ++serviceRequests;
    *out = nullptr;
    auto* const entry = services_.find(interfaceName);
    if (entry != nullptr) entry->value->queryInterface(interfaceName.text(), out);
    return done(*out != nullptr ? kOroBrokerDone : kOroBrokerNoInterface);
  }
  bool hasService(const KelCString& interfaceName) override {
    return services_.find(interfaceName) != nullptr;
  }
  bool classSupports(const GUID&, const KelCString&) override { return false; }
  int32_t getLastStatus() override { return status_; }
  void countUp(int32_t* count) override {
    const std::lock_guard guard(countLock_);
    ++countChanges;
    ++*count;
  }
  bool countDown(int32_t* count) override {
    const std::lock_guard guard(countLock_);
    ++countChanges;
    return --*count == 0;
  }
  IOroObjBroker* groupBroker(const KelCString& groupName, bool) override {
    if (groupName.isEmpty()) return this;
    const auto found = groups_.find(groupName.text());
    return found == groups_.end() ? nullptr : found->second.get();
  }
  IOroClassRegistration* classRegistration() override { return nullptr; }
  IOroComponentManager* componentManager() override { return nullptr; }
  int32_t setClassObject(const GUID& classId, IOroUnknown* object) override {
    classObjects_.remove(classId);
    classObjects_.insert(classId, object);
    return 1;
  }
  int32_t removeClassObject(const GUID& classId) override {
    return classObjects_.remove(classId) ? kOroBrokerDone : kOroBrokerNoClass;
  }
  int32_t createInstance(const GUID& classId, const KelCString& interfaceName,
                         void** out) override {
    return createObject(classId, interfaceName, out);
  }

 private:
  struct Group {};
  explicit FakeBroker(Group) {}  // not the process's broker

  int32_t done(int32_t status) {
    status_ = status;
    return status == kOroBrokerDone ? 1 : 0;
  }

  platform::CountLock countLock_;  // guards each reference count of the process
  int32_t status_ = kOroBrokerDone;
  OroHashTable<KelCString, IPtr<IOroUnknown>> services_{99};
  OroHashTable<GUID, IPtr<IOroUnknown>> classObjects_{17};
  std::map<std::string, std::unique_ptr<FakeBroker>> groups_;
};

}  // namespace tests
