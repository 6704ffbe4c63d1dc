// Stand-ins for the broker's neighbours: a component manager and components that answer as told, a
// service object, observers that remember.
//
// All are owned by the test and taken out of the broker before they go.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentManagerV2.h"
#include "interfaces/IOroLog3.h"
#include "interfaces/IOroObserver.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

namespace tests {

inline constexpr GUID idOf(uint32_t first) {
  return {first, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 0xAB}};
}

// How reports show idOf(first).
inline std::string idText(const char* first) {
  return std::string(first) + ", 0x1234, 0x5678, 0x1, 0x2, 0x3, 0x4, 0x5, 0x6, 0x7, 0xab";
}

class IFakeService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IFakeService"; }
  virtual int32_t number() = 0;
};

class IFakeOther : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IFakeOther"; }
};

// Offers IFakeService; counts how often it is asked for an interface, and the living.
class FakeObject : public IFakeService {
 public:
  static constexpr const char* className() { return "FakeObject"; }
  using Offers = OroOffers<FakeObject, IFakeService>;
  explicit FakeObject(int32_t number = 0) : number_(number) { ++alive; }
  ~FakeObject() override {
    --alive;
    if (onDeath) onDeath();
  }
  void queryInterface(const char* name, void* out) override {
    ++queries;
    Offers::query(*this, name, out);
  }
  const char* getClassName() const override { return className(); }
  int32_t number() override { return number_; }

  std::atomic<int> queries = 0;
  std::function<void()> onDeath;
  static inline std::atomic<int> alive = 0;

 private:
  int32_t number_;
};

// Answers getClassObject as told; unknown classes with 0.
class FakeComponent : public IOroComponent {
 public:
  static constexpr const char* className() { return "FakeComponent"; }
  using Offers = OroOffers<FakeComponent, IOroComponent>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void initialise(IOroObjBroker*) override { ++initialised; }
  void shutDown() override {
    ++shutDowns;
    if (onShutDown) onShutDown();
  }
  int32_t getClassObject(const GUID&, IOroUnknown** out) override {
    ++requests;
    *out = give ? give() : nullptr;
    return status;
  }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }

  std::function<IOroUnknown*()> give;
  std::function<void()> onShutDown;
  int32_t status = 1;
  int requests = 0;
  int initialised = 0;
  int shutDowns = 0;
};

// Knows the components that it is told of; no libraries.
class FakeManager : public IOroComponentManagerV2 {
 public:
  static constexpr const char* className() { return "FakeManager"; }
  using Offers = OroOffers<FakeManager, IOroComponentManager, IOroComponentManagerV2>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool getComponent(const GUID& id, const KelCString& groupName, IOroComponent** out) override {
    groups.push_back(groupName.c_str());
    const auto found = components.find(id);
    status = found != components.end() ? 1 : 3001;
    if (status == 1 && found->second != nullptr) *out = found->second;
    return status == 1;
  }
  bool registerContainer(const GUID&, const KelCString&, IOroComponentContainer*) override {
    return false;
  }
  int32_t setLibraryPath(const GUID&, const KelCString&, const OroString&) override { return 1; }
  void setBroker(IOroObjBroker*) override {}
  int32_t getLastStatus() override { return status; }
  bool getLibraryPath(const GUID&, const KelCString&, OroString&) override { return false; }
  bool getComponentName(const GUID& id, const KelCString&, KelCString& out) override {
    const auto found = names.find(id);
    if (found != names.end()) out = found->second.c_str();
    return found != names.end();
  }

  std::map<GUID, IOroComponent*> components;  // null: known, but its library does not load
  std::map<GUID, std::string> names;
  std::vector<std::string> groups;  // the group of each request
  int32_t status = 1;
};

class FakeObserver : public IOroObserver {
 public:
  static constexpr const char* className() { return "FakeObserver"; }
  using Offers = OroOffers<FakeObserver, IOroObserver>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void update(const KelCString& text, IOroSubject* subject, int32_t flag) override {
    texts.push_back(text.c_str());
    lastSubject = subject;
    lastFlag = flag;
    if (onUpdate) onUpdate();
  }

  std::vector<std::string> texts;
  IOroSubject* lastSubject = nullptr;
  int32_t lastFlag = -1;
  std::function<void()> onUpdate;
};

class FakeLog : public IOroLog3 {
 public:
  static constexpr const char* className() { return "FakeLog"; }
  using Offers = OroOffers<FakeLog, IOroLog3>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void log(const KelCString& text) override {
    texts.push_back(text.c_str());
    if (onLog) onLog();
  }

  std::vector<std::string> texts;
  std::function<void()> onLog;
};

}  // namespace tests
