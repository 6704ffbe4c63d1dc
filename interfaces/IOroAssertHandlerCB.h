// IOroAssertHandlerCB: hears of failed assertions in modules that have no callback of their own.
//
// The host has none: without this service a failed assertion ends the process with status 255.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroAssertHandlerCB : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroAssertHandlerCB"; }

  // The text of the failed condition, which may be empty, the source's name and the line. Called in
  // the thread that failed. On return that thread goes on past the assertion.
  virtual void assertionFailed(const char* expression, const char* file, int32_t line) = 0;
};
