// CowlComponent: the component that the executable itself is. It makes the objects of its classes.
//
// Its container owns it. It keeps the one CowlApp of the process; each CowlImageAdder is new and
// belongs to whoever asked. Its callers serialise requests.
#pragma once

#include "gui/apps/cowl/cowlapp.h"
#include "interfaces/IOroComponent.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"

class CowlComponent : public IOroComponent {
 public:
  static constexpr const char* className() { return "CowlComponent"; }

  CowlComponent() = default;
  ~CowlComponent() override;                   // the strings' pool is given back with it
  void initialise(IOroObjBroker*) override {}  // the executable knows its broker
  void shutDown() override {}
  // 1 also for the CowlApp, which is shared: it shall not be published as a service. 0 and null for
  // an unknown class.
  int32_t getClassObject(const GUID& classId, IOroUnknown** out) override;
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }

  using Offers = OroOffers<CowlComponent, IOroComponent>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  IOroUnknown* theApp();

  IPtr<CowlApp> app_;  // null until somebody asks
};
