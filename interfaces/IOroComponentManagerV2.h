// IOroComponentManagerV2: what is known of a component without loading it.
#pragma once

#include "interfaces/IOroComponentManager.h"

class IOroComponentManagerV2 : public IOroComponentManager {
 public:
  static constexpr const char* interfaceName() { return "IOroComponentManagerV2"; }

  // Where the library lies. False, and `out` left alone, when nothing is known.
  virtual bool getLibraryPath(const GUID& componentId, const KelCString& groupName,
                              OroString& out) = 0;

  // The component's name for messages. False, and `out` left alone, when nothing is known.
  virtual bool getComponentName(const GUID& componentId, const KelCString& groupName,
                                KelCString& out) = 0;
};
