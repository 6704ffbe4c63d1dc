// IOroOpenOptions: options for opening a file, handed to IOroOpenDoc::open.
//
// May be absent. The flow passes it on and calls nothing.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroOpenOptions : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroOpenOptions"; }
};
