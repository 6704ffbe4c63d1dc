// What test components tell: a service that the test publishes and that the libraries write to.
#pragma once

#include <string>
#include <vector>

#include "orobasictypes/orooffers.h"

class ITestJournal : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ITestJournal"; }
  virtual void note(const char* text) = 0;
};
