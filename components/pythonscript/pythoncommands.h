// The application's commands as functions of the module `cowl`.
//
//   cowl.crop(min=(0, 0, 0), max=(10, 10, 5), cloud="scan")
//
// Made from the table of commands (ICommandTable): what is entered there is here, with its help.
// Values come by place or by name; `cloud` limits a command to one cloud. A result is a dict of
// what the command found out, or None. cowl.Error tells a failure, cowl.Cancelled a stop.
#pragma once

#include <pybind11/pybind11.h>

void definePythonCommands(pybind11::module_& module);
