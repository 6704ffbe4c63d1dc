// What the process holds from its start to its end: set once, never cleared, never destroyed.
//
// The process leaves with the component manager, the broker and all services alive, so that nothing
// of them runs behind the last instruction of the program; what must be flushed is flushed by
// OroAppMain::shutDown. Main thread.
#pragma once

class IOroClassRegistration;
class KelComponentManager;
class OroAppMain;
class OroObjectBroker;

struct OroAppGlobals {
  OroAppMain* appMain = nullptr;  // the one on the main function's stack; its address is a key
  KelComponentManager* componentManager = nullptr;
  OroObjectBroker* broker = nullptr;
  IOroClassRegistration* classRegistration = nullptr;  // the broker in that role
  void* errorHandler = nullptr;  // for invalid memory accesses; null: the error service's own
  bool requireStarter = false;   // true: a start without an application starter fails
};

OroAppGlobals& oroAppGlobals();
