// ILogFile: an optional log of the base library, looked up by name through oroLogFile().
//
// No class of the host offers it and the host calls no operation of it.
#pragma once

#include "orobasictypes/iorounknown.h"

class ILogFile : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ILogFile"; }
};
