// IPrimitivesService: the maker of the application's basic shapes.
//
// The command-line flow only holds the service, so that its library is loaded and stays; it calls
// nothing.
#pragma once

#include "orobasictypes/iorounknown.h"

class IPrimitivesService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IPrimitivesService"; }
};
