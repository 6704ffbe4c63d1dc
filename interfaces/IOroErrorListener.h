// IOroErrorListener: hears every report of the error service.
//
// Add one with IOroErrorService::addListener, which takes a reference. It is called in the thread
// that reports, under the error service's mutex: it must not wait for another thread that reports.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;
class OroString;

class IOroErrorListener : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroErrorListener"; }

  // `severity` points to 0 (warning), 1 (error) or an unknown number; never null. `detail` is in
  // general empty.
  virtual void onError(const OroString& text, const int32_t* severity,
                       const KelCString& detail) = 0;
};
