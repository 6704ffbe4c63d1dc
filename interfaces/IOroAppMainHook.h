// IOroAppMainHook: a caller's chance to act on the framework before the start-up reads its
// environment.
//
// Handed to IOroAppMain::init by whoever owns the process; the caller keeps it. Not counted and not
// asked for by name.
#pragma once

class IOroClassRegistration;
class IOroComponentManager;
class IOroObjBroker;

class IOroAppMainHook {
 public:
  virtual ~IOroAppMainHook() = default;
  // Called once, on the main thread: the built-in services stand, and neither arguments nor product
  // facts are in the registry yet.
  virtual void beforeEnvironment(IOroObjBroker* broker, IOroClassRegistration* registration,
                                 IOroComponentManager* manager) = 0;
};
