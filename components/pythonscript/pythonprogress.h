// PythonProgress: a long step of a script, shown through the interactive services.
//
//   with cowl.progress("Colouring") as step:
//       step.update(0.5)
//
// The step begins when the block is entered and ends when it is left, in whatever way. update()
// raises cowl.Cancelled when the user wants the work to stop. Silent where the services are absent.
// Main thread, under the interpreter's lock.
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>

#include "orobasictypes/orostring.h"

class PythonProgress {
 public:
  static void define(pybind11::module_& module);

  explicit PythonProgress(const pybind11::object& text);
  ~PythonProgress() { leave(); }
  PythonProgress(const PythonProgress&) = delete;
  PythonProgress& operator=(const PythonProgress&) = delete;

  void enter();
  void leave();
  // From 0 to 1; ValueError for anything else, TypeError for no number.
  void update(const pybind11::object& fraction);

 private:
  OroString text_;
  bool running_ = false;
  int32_t percent_ = -1;  // shown last
};

// Whether the user wants the work to stop: asked of the progress service.
bool pythonWorkCancelled();
