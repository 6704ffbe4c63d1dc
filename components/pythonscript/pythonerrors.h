// The exceptions of the module `cowl`: Error, and Cancelled, which is one.
//
// Under the interpreter's lock.
#pragma once

#include <pybind11/pybind11.h>

#include "orobasictypes/orostring.h"

void definePythonErrors(pybind11::module_& module);

// Raises cowl.Error with this text in the script.
[[noreturn]] void throwPythonError(const OroString& text);

// Raises cowl.Cancelled: the user wants the work to stop.
[[noreturn]] void throwPythonCancelled();
