// Text between the application, UTF-16, and Python.
//
// Needs the interpreter's lock. A conversion that Python refuses throws pybind11's exception, which
// becomes the script's own.
#pragma once

#include <pybind11/pybind11.h>

#include "orobasictypes/orostring.h"

// A lone surrogate stays what it is.
pybind11::str pythonText(const OroString& text);

// Throws ValueError for a text with a character 0, which the application cannot hold.
OroString applicationText(pybind11::handle text);
