#include "components/pythonscript/pythonmodule.h"

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "components/pythonscript/pythoncloud.h"
#include "components/pythonscript/pythoncommands.h"
#include "components/pythonscript/pythonerrors.h"
#include "components/pythonscript/pythonprogress.h"
#include "components/pythonscript/pythonsettings.h"
#include "components/pythonscript/pythontext.h"
#include "orobasictypes/orotranslate.h"

namespace py = pybind11;

namespace {

py::str translate(const py::object& key, const py::args& arguments) {
  const std::string name = narrowText(key);
  std::vector<OroString> texts;
  for (const py::handle argument : arguments) texts.push_back(applicationText(py::str(argument)));
  OroString out;
  oroTranslateArray(out, name.c_str(), static_cast<int32_t>(texts.size()), texts.data());
  return pythonText(out);
}

void fill(py::module_& module) {
  module.doc() = "The application: its document, its commands, its settings.";
  definePythonErrors(module);
  PythonSettings::define(module);
  PythonProgress::define(module);
  PythonCloud::define(module);
  definePythonCommands(module);
  module.def("text", translate, py::arg("key"),
             "The text of an English key in the user's language; arguments fill %1 onward.");
}

// No exception may reach the interpreter.
PyObject* makeModule() {
  static py::module_::module_def definition;
  try {
    py::module_ module = py::module_::create_extension_module("cowl", nullptr, &definition);
    fill(module);
    return module.release().ptr();
  } catch (py::error_already_set& error) {
    error.restore();
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_ImportError, error.what());
  }
  return nullptr;
}

}  // namespace

void addPythonModule() { PyImport_AppendInittab("cowl", makeModule); }
