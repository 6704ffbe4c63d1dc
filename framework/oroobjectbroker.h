// OroObjectBroker: the tables of classes, interfaces and services, and the lock of all reference
// counts.
//
// The process has one, made by the application main, which publishes it through oroSetBroker; the
// brokers of named groups hang below it. It knows no library: the component manager does. Tables
// are written on the main thread at start; services are then found by any thread without a lock,
// and objects are made one at a time under the create lock. The first request for a shared service
// writes a table too: let the main thread make it before others ask. Where it meets the manager's
// mutex, the create lock comes first.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <set>

#include "interfaces/IOroClassRegistration.h"
#include "interfaces/IOroIidToClsid.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroSubject.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelcstringset.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"
#include "platform/sync.h"

class IOroComponent;

class OroObjectBroker : public IOroObjBroker,
                        public IOroClassRegistration,
                        public IOroIidToClsid,
                        public IOroSubject {
 public:
  static constexpr const char* className() { return "OroObjectBroker"; }
  using Offers = OroOffers<OroObjectBroker, IOroSubject>;

  // The manager is borrowed and may be null. A group name makes the broker of that group, smaller
  // and without a part in the class log.
  explicit OroObjectBroker(IOroComponentManager* manager, const KelCString& groupName = {});
  OroObjectBroker(const OroObjectBroker&) = delete;
  OroObjectBroker& operator=(const OroObjectBroker&) = delete;
  // Gives up services and class objects while counts still change under its lock; the process's
  // broker then takes itself away, and what still lives counts without one.
  ~OroObjectBroker() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // IOroObjBroker
  int32_t createObject(const GUID& classId, const KelCString& interfaceName, void** out) override;
  int32_t getComponentId(const GUID& classId, GUID& out) override;
  int32_t registerService(const KelCString& interfaceName, IOroUnknown* object) override;
  int32_t registerInterface(const KelCString& interfaceName, const GUID& classId) override;
  int32_t unregisterInterface(const KelCString& interfaceName) override;
  int32_t getService(const KelCString& interfaceName, void** out) override;
  bool hasService(const KelCString& interfaceName) override;
  bool classSupports(const GUID& classId, const KelCString& interfaceName) override;
  int32_t getLastStatus() override { return lastStatus_.load(std::memory_order_relaxed); }
  void countUp(int32_t* count) final {
    countLock_.lock();
    ++*count;
    countLock_.unlock();
  }
  bool countDown(int32_t* count) final {
    countLock_.lock();
    const bool gone = --*count == 0;
    countLock_.unlock();
    return gone;
  }
  OroObjectBroker* groupBroker(const KelCString& groupName, bool create) override;
  IOroClassRegistration* classRegistration() override { return this; }
  IOroComponentManager* componentManager() override { return componentManager_; }
  int32_t setClassObject(const GUID& classId, IOroUnknown* object) override;
  int32_t removeClassObject(const GUID& classId) override;
  int32_t createInstance(const GUID& classId, const KelCString& interfaceName, void** out) override;

  // IOroClassRegistration
  int32_t registerClass(const GUID& classId, const GUID& componentId, const KelCStringSet& tags,
                        const KelCString& className) override;
  int32_t unregisterClass(const GUID& classId) override;

  // IOroIidToClsid
  bool classOfInterface(const KelCString& interfaceName, GUID& out) override;

  // IOroSubject
  void attach(IOroObserver* observer) override;
  void detach(IOroObserver* observer) override;
  void notify(const KelCString& text, int32_t flag) override;

 private:
  // A published object and, once it was asked, its interface of that name: what an object answers
  // does not change while it lives.
  struct Service {
    explicit Service(IOroUnknown* published) : object(published) {}
    Service(Service&& other) noexcept : object(other.object), answer(other.answer.load()) {}

    IOroUnknown* object;                  // one reference on it; null while the broker ends
    std::atomic<void*> answer = nullptr;  // null until the object has answered
  };
  struct Answer {  // of a component to a request for an object
    IOroUnknown* object = nullptr;
    int32_t status = kOroBrokerNoClass;
    bool isObject() const {
      return object != nullptr && (status == kOroBrokerDone || status == kOroBrokerShared);
    }
  };

  using ServiceTable = OroHashTable<KelCString, Service>;
  using ServiceEntry = ServiceTable::Entry;

  int32_t findOrMakeService(const KelCString& interfaceName, void** out);
  std::atomic<ServiceEntry*>& recentService(const KelCString& interfaceName);
  static void* interfaceOf(ServiceEntry& service);
  int32_t finish(int32_t status);  // stores the status and tells whether it is success
  int32_t create(const GUID& classId, const KelCString& interfaceName, void** out);
  bool findComponent(const GUID& classId, GUID& componentId, int32_t& status);
  int32_t handOut(const Answer& answer, const GUID& classId, const KelCString& interfaceName,
                  void** out);
  static Answer askComponent(IOroComponent* component, const GUID& classId);
  IOroUnknown* classObject(const GUID& classId) const;
  int32_t findObserver(const IOroObserver* observer);

  void report(const KelCString& text);
  void reportNoObject(const GUID& classId, const GUID& componentId);
  void reportNoInterface(IOroUnknown& object, const KelCString& interfaceName);
  void reportDuplicate(const GUID& classId, const GUID& firstComponent, const GUID& component,
                       const KelCString& className);
  KelCString componentName(const GUID& componentId);
  KelCString componentNameOfClass(const GUID& classId);

  OroHashTable<GUID, GUID> classToComponent_;
  OroHashTable<KelCString, GUID> interfaceToClass_;  // the default class; may be all zero
  ServiceTable services_;
  // Services that have answered, which nothing removes from services_, by the address of the name.
  std::array<std::atomic<ServiceEntry*>, 128> recentServices_{};
  std::unique_ptr<OroHashTable<GUID, IOroUnknown*>> classObjects_;  // one on each that is not null
  std::map<KelCString, std::set<GUID>, KelCStringLess> tagClasses_;
  std::map<GUID, KelCString> classNames_;   // for messages; kept when a class goes
  IOroComponentManager* componentManager_;  // not counted
  std::atomic<int32_t> lastStatus_ = kOroBrokerDone;
  platform::CountLock countLock_;         // of reference counts and nothing else
  platform::CriticalSection createLock_;  // of the making of objects
  OroArray<IOroObserver*> observers_;     // borrowed
  std::atomic<int32_t> notifyDepth_ = 0;
  std::unique_ptr<OroHashTable<KelCString, OroObjectBroker*>> groups_;  // owned
  KelCString groupName_;  // empty: the process's broker
};
