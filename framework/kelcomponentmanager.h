// KelComponentManager: which component lies in which library, and the components in memory.
//
// The application main makes the one instance and publishes it; it is never destroyed by the host.
// getComponent loads a library at the first request, under a mutex of its own; it may be called by
// any thread and from within a component. The rest belongs to the main thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "interfaces/IOroComponentLoader.h"
#include "interfaces/IOroComponentManagerV3.h"
#include "interfaces/IOroComponentUnloader.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "platform/sync.h"

class KelComponentManager : public IOroComponentManagerV3,
                            public IOroComponentLoader,
                            public IOroComponentUnloader {
 public:
  static constexpr const char* className() { return "KelComponentManager"; }
  using Offers = OroOffers<KelComponentManager, IOroComponentManager, IOroComponentManagerV2,
                           IOroComponentManagerV3, IOroComponentLoader, IOroComponentUnloader>;

  KelComponentManager() = default;
  KelComponentManager(const KelComponentManager&) = delete;
  KelComponentManager& operator=(const KelComponentManager&) = delete;
  ~KelComponentManager() override;  // unloads everything

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // IOroComponentManager
  bool getComponent(const GUID& componentId, const KelCString& groupName,
                    IOroComponent** out) override;
  bool registerContainer(const GUID& componentId, const KelCString& groupName,
                         IOroComponentContainer* container) override;
  int32_t setLibraryPath(const GUID& componentId, const KelCString& groupName,
                         const OroString& path) override;
  void setBroker(IOroObjBroker* broker) override { broker_ = broker; }
  int32_t getLastStatus() override { return lastStatus_.load(std::memory_order_relaxed); }

  // IOroComponentManagerV2, IOroComponentManagerV3
  bool getLibraryPath(const GUID& componentId, const KelCString& groupName,
                      OroString& out) override;
  bool getComponentName(const GUID& componentId, const KelCString& groupName,
                        KelCString& out) override;
  void setStaticLinkage(bool flag) override { staticLinkage_ = flag; }
  bool getStaticLinkage() override { return staticLinkage_; }

  // IOroComponentLoader, IOroComponentUnloader
  int32_t registerComponent(const OroString& libraryPath, const GUID& componentId,
                            const KelCString& componentName, const KelCString& groupName) override;
  bool unloadComponent(const GUID& componentId, const KelCString& groupName) override;

  // Tells every component in memory to end its work, those of named groups first. All of them stay.
  void shutDownComponents();

 private:
  // The components of one group; the default group is that of the empty name.
  struct Group {
    explicit Group(uint32_t sizes)
        : containers(sizes), libraryPaths(sizes), componentNames(sizes) {}
    ~Group();

    OroHashTable<GUID, IOroComponentContainer*> containers;  // owned, whatever the counts
    OroHashTable<GUID, OroString> libraryPaths;
    OroHashTable<GUID, KelCString> componentNames;  // for messages
  };

  bool finish(int32_t status);  // stores the status and tells whether it is success
  Group* findGroup(const KelCString& groupName);
  Group& makeGroup(const KelCString& groupName);
  int32_t provide(Group& group, const GUID& componentId, const KelCString& groupName,
                  IOroComponent*& found);
  static void shutDownGroup(Group& group);

  static constexpr uint32_t kDefaultSizes = 99;  // the next size of the prime table is taken
  static constexpr uint32_t kNamedSizes = 2;
  static constexpr uint32_t kGroups = 2;

  Group defaultGroup_{kDefaultSizes};
  std::unique_ptr<OroHashTable<KelCString, Group*>> groups_;  // owned; null until the first
  IOroObjBroker* broker_ = nullptr;                           // not counted
  platform::KernelMutex mutex_;                               // of getComponent
  std::atomic<int32_t> lastStatus_ = kOroComponentDone;
  bool staticLinkage_ = false;
};
