// IOroAppMain: the application main object, which owns the order of start and stop.
//
// The process's main function makes one on its stack. It is a plain class: not counted and not
// asked for by name. Main thread.
#pragma once

#include <cstdint>

class IOroAppMainHook;
class IOroObjBroker;
class OroString;

class IOroAppMain {
 public:
  // Shuts down first where that has not been done.
  virtual ~IOroAppMain() = default;

  // Both halves of the start, one after the other. `argv` holds the arguments, the program's name
  // first; `hook` may be null. 0 on success.
  virtual int32_t init(int32_t argc, const OroString* argv, IOroAppMainHook* hook) = 0;
  // Component manager, broker and the built-in services. Always 0.
  virtual int32_t initEssential() = 0;
  // Environment, init server, application starter, language. 0 on success, 1 on failure, or what
  // the starter's start answered.
  virtual int32_t initConfigurable(int32_t argc, const OroString* argv, IOroAppMainHook* hook) = 0;
  // Runs the application starter: its result, or 1 when nothing was started or there is none.
  virtual int32_t run() = 0;
  // Stops what was started, once: 1 when a script left an error that counts, else 0.
  virtual int32_t shutDown() = 0;

  // Null before initEssential.
  virtual IOroObjBroker* objectBroker() = 0;
  // A handler for invalid memory accesses, in place of the error service's own. Only effective
  // before initEssential.
  virtual void setErrorHandler(void* handler) = 0;
};
