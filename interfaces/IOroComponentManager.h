// IOroComponentManager: from a component id to the component, whose library is loaded when first
// needed and stays loaded.
//
// A component belongs to a group: the default one has the empty name, a named one is a separate
// world. getComponent may be called by any thread; the rest belongs to start-up, main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroComponent;
class IOroComponentContainer;
class IOroObjBroker;
class KelCString;
class OroString;
struct GUID;

// What getLastStatus answers.
enum OroComponentStatus : int32_t {
  kOroComponentDone = 1,
  kOroComponentNotFound = 3001,  // no group of that name, or nothing known of that id
  kOroComponentAlreadyThere = 3002,
  kOroComponentNullArgument = 3003,
};

class IOroComponentManager : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroComponentManager"; }

  // The component, borrowed. False when nothing is known of it. Start from a null *out and test it:
  // after a library that could not be brought up the result is true and *out untouched.
  virtual bool getComponent(const GUID& componentId, const KelCString& groupName,
                            IOroComponent** out) = 0;

  // Enters a component that needs no loading; the manager owns the container then. False for null,
  // an unknown group, or an id that has a container: it stays the caller's.
  virtual bool registerContainer(const GUID& componentId, const KelCString& groupName,
                                 IOroComponentContainer* container) = 0;

  // Notes or replaces where a component's library lies; makes the group if need be. Always 1.
  virtual int32_t setLibraryPath(const GUID& componentId, const KelCString& groupName,
                                 const OroString& path) = 0;

  // The broker handed to each component from now on; not counted.
  virtual void setBroker(IOroObjBroker* broker) = 0;

  // An OroComponentStatus.
  virtual int32_t getLastStatus() = 0;
};
