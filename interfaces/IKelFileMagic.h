// IKelFileMagic: an optional service that knows files by their first bytes.
//
// The host asks for it once, when the base library ends, so that it can let go of its tables.
#pragma once

#include "orobasictypes/iorounknown.h"

class IKelFileMagic : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelFileMagic"; }

  virtual void end() = 0;
};
