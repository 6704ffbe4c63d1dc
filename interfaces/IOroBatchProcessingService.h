// IOroBatchProcessingService: works through many files in one run.
//
// Everything about the batch stands in the settings. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroBatchProcessingService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroBatchProcessingService"; }

  // Runs the whole batch and returns when it is done.
  virtual void run() = 0;
};
