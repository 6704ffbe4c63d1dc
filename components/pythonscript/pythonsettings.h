// PythonSettings: the application's settings as a script sees them, `cowl.settings`.
//
//   cowl.settings["Points/Decimals"] = 3
//
// Integers, floats and texts by their path. Needs the interpreter's lock; throws Python's own
// exceptions. Main thread.
#pragma once

#include <pybind11/pybind11.h>

class PythonSettings {
 public:
  // Enters the class and its one object into the module.
  static void define(pybind11::module_& module);

  // KeyError where there is none of a kind that a script can hold.
  pybind11::object item(const pybind11::object& path) const;
  pybind11::object get(const pybind11::object& path, const pybind11::object& otherwise) const;
  // Keeps the kind of the setting: TypeError for a value of another one, ValueError out of range.
  void set(const pybind11::object& path, const pybind11::object& value) const;
  bool contains(const pybind11::object& path) const;
  // Makes the setting, its parents with it, unless it is there; the kind is that of the value.
  void declare(const pybind11::object& path, const pybind11::object& value) const;
};
