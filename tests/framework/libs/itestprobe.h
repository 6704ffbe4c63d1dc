// What a test asks of an object that a test component made: how things look from inside its module.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;
struct GUID;

class ITestProbe : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ITestProbe"; }

  virtual int32_t startedCalls() = 0;   // of the module
  virtual int32_t stoppingCalls() = 0;  // of the module
  virtual void componentName(KelCString& out) = 0;
  virtual void groupName(KelCString& out) = 0;
  virtual void componentId(GUID& out) = 0;
  // What SPtr finds under "ITestProbe" inside the module, borrowed.
  virtual ITestProbe* probeService() = 0;
};
