// Text between the application, UTF-16, and Python.
//
// Needs the interpreter's lock. A conversion that Python refuses throws pybind11's exception, which
// becomes the script's own.
#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "orobasictypes/orostring.h"

// A lone surrogate stays what it is.
pybind11::str pythonText(const OroString& text);

// Throws TypeError for what is no text, and ValueError for a text with a character 0, which the
// application cannot hold.
OroString applicationText(pybind11::handle text);

// The same for what the application has in UTF-8: paths of settings, keys of texts.
std::string narrowText(pybind11::handle text);
