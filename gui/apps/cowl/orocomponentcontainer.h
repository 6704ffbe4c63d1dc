// OroComponentContainer: holds a component that is linked into the executable, and makes it ready
// when it is first asked for.
//
// The component manager owns it (registerContainer); it owns the component. Its caller serialises
// requests.
#pragma once

#include "interfaces/IOroClcBinary.h"
#include "interfaces/IOroComponentContainer.h"
#include "orobasictypes/orooffers.h"

class IOroComponentManager;
class IOroObjBroker;

// The block of bytes is an empty one that no name leads to; its place in the object counts.
class OroComponentContainer : public IOroComponentContainer, public IOroClcBinary {
 public:
  static constexpr const char* className() { return "OroComponentContainer"; }

  // Takes over the component; manager and broker must outlive it.
  OroComponentContainer(IOroComponent* component, IOroComponentManager* manager,
                        IOroObjBroker* broker)
      : component_(component), componentManager_(manager), broker_(broker) {}
  OroComponentContainer(const OroComponentContainer&) = delete;
  OroComponentContainer& operator=(const OroComponentContainer&) = delete;
  ~OroComponentContainer() override;

  IOroComponent* component() override;
  IOroComponentManager* componentManager() const { return componentManager_; }

  uint32_t size() override { return 0; }
  const void* data() override { return nullptr; }

  using Offers = OroOffers<OroComponentContainer, IOroComponentContainer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  IOroComponent* component_;                // owned
  IOroComponentManager* componentManager_;  // not counted
  IOroObjBroker* broker_;                   // not counted
  bool uninitialised_ = true;
};
