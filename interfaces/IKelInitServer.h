// IKelInitServer: what the library "initserver" offers to the start-up.
//
// It reads the application description, in a form of its own, and makes components, classes,
// default interfaces and registry values known. The host calls the operations once each, on the
// main thread, in the order setClassRegistration, readDescription, finish, and drops the object
// then.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroClassRegistration;

class IKelInitServer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelInitServer"; }

  // Reads the application description; the host passes 0. False ends the start-up.
  virtual bool readDescription(int32_t options) = 0;

  // The application starter, if any, has been initialised and the language is chosen.
  virtual void finish() = 0;

  // Where classes and interfaces are made known. Borrowed, valid to the end of the process.
  virtual void setClassRegistration(IOroClassRegistration* registration) = 0;
};
