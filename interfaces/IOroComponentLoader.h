// IOroComponentLoader: how the application description makes component libraries known.
//
// Start-up only, main thread only.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;
class OroString;
struct GUID;

class IOroComponentLoader : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroComponentLoader"; }

  // Enters or replaces a component's library (a path without suffix serves all platforms) and its
  // name for messages; makes the group if need be. Loads nothing. Always 1.
  virtual int32_t registerComponent(const OroString& libraryPath, const GUID& componentId,
                                    const KelCString& componentName,
                                    const KelCString& groupName) = 0;
};
