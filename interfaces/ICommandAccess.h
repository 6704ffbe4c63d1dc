// ICommandAccess: the access to the application's commands.
//
// The command-line flow only holds the service, so that its library is loaded and stays; it calls
// nothing.
#pragma once

#include "orobasictypes/iorounknown.h"

class ICommandAccess : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ICommandAccess"; }
};
