// What goes wrong in the module `cowl`, as exceptions of the script: those of Python for what a
// script does wrong, cowl.Error for what a command cannot do, cowl.Cancelled, which is one, for
// what was stopped. Texts are in the user's language.
//
// Under the interpreter's lock.
#pragma once

#include <pybind11/pybind11.h>

#include "orobasictypes/orostring.h"

void definePythonErrors(pybind11::module_& module);

// Raises an exception of Python's own, such as PyExc_ValueError, with the text of an English key.
[[noreturn]] void raisePython(PyObject* type, const char* key, const OroString& a1 = OroString(),
                              const OroString& a2 = OroString());

// Raises KeyError with what was looked for.
[[noreturn]] void raiseKeyError(pybind11::handle wanted);

// Raises cowl.Error with this text in the script.
[[noreturn]] void throwPythonError(const OroString& text);

// Raises cowl.Cancelled: the user wants the work to stop.
[[noreturn]] void throwPythonCancelled();
