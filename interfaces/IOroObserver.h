// IOroObserver: hears what an IOroSubject tells.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroSubject;
class KelCString;

class IOroObserver : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroObserver"; }

  // Called during IOroSubject::notify. `flag` is always 0; text and subject are borrowed.
  virtual void update(const KelCString& text, IOroSubject* subject, int32_t flag) = 0;
};
