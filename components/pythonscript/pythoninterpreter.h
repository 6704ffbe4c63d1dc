// PythonInterpreter: the embedded CPython of the process, started when the first script comes.
//
// The configuration is isolated: no variable of the environment, no user's own packages, no folder
// of the script and no current directory decides what a script imports; the distribution's packages
// do. It is never ended: packages such as NumPy do not survive that. The main thread keeps the
// interpreter's lock between scripts too, so that threads that a script left running stand still
// while the host works on the document. Main thread.
#pragma once

#include "orobasictypes/orostring.h"

struct _object;

// How a script ended.
struct PythonEnd {
  OroString problem;         // the traceback or whatever else tells a failure; empty after success
  bool interrupted = false;  // the user's interrupt ended it
};

class PythonInterpreter {
 public:
  // Runs the bytes of a script; `path` is its name in messages, `arguments` its command line.
  // Throws nothing. An interrupt of the user raises KeyboardInterrupt in the script.
  PythonEnd run(const char* source, size_t size, const OroString& path, const OroString& arguments);

 private:
  OroString start();
  PythonEnd call(const char* source, size_t size, const OroString& path,
                 const OroString& arguments) const;

  _object* runner_ = nullptr;  // the function that runs a script; held for good once started
};
