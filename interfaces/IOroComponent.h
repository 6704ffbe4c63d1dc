// IOroComponent: what a component library offers, one object per loaded library.
//
// The library's EntryPoint hands it out; the component manager owns it and destroys it when the
// library is unloaded, whatever its count says. components/kit has a ready base class.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroObjBroker;
struct GUID;

class IOroComponent : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroComponent"; }

  // Gives the component the broker, once, right after loading. The broker outlives the component.
  virtual void initialise(IOroObjBroker* broker) = 0;

  // The component is to end its work; its objects may still be used to tidy up.
  virtual void shutDown() = 0;

  // An object of the class, borrowed: 1 when it is new, 2 when it is shared and may be published as
  // a service; anything else is a failure. May be called by any thread, one at a time.
  virtual int32_t getClassObject(const GUID& classId, IOroUnknown** out) = 0;

  // The host calls neither; their place counts.
  virtual int32_t unusedSlot4() = 0;
  virtual int32_t unusedSlot5() = 0;
};
