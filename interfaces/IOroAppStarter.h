// IOroAppStarter: the service by which an application proper takes over the process.
//
// A component library offers it when the application has a user interface of its own; without one
// the process runs its command line. All calls come on the main thread, in the order of the
// operations.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IOroAppStarter : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroAppStarter"; }

  // The process's arguments, the program's name first; valid for the length of the run.
  virtual void init(int32_t argc, const OroString* argv) = 0;

  // The init server has finished: all components are known and the language is chosen.
  virtual void initDone() = 0;

  // 0 on success; any other value fails the start and becomes its result.
  virtual int32_t start() = 0;

  // Runs the application; 0 is success.
  virtual int32_t run() = 0;

  // The application is to end. The host drops its reference right after.
  virtual void shutDown() = 0;
};
