// IOroComponentUnloader: takes a loaded component out of memory.
//
// Nobody may hold an object of the library any more: its code is gone afterwards. Main thread.
#pragma once

#include "orobasictypes/iorounknown.h"

class KelCString;
struct GUID;

class IOroComponentUnloader : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroComponentUnloader"; }

  // Shuts the component down, destroys it whatever its count, and unloads its library; it stays
  // known. False when it is not in memory.
  virtual bool unloadComponent(const GUID& componentId, const KelCString& groupName) = 0;
};
