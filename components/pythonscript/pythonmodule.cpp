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

// The classes and exceptions are those of one interpreter; in another one they would wait for the
// lock of the first for good.
bool isMainInterpreter() {
  if (PyInterpreterState_Get() == PyInterpreterState_Main()) return true;
  OroString text;
  oroTranslate(text, "the module cowl is for the main interpreter alone");
  PyErr_SetString(PyExc_ImportError, text.toUtf8());
  return false;
}

// Fills the module. One that is imported once more, under whatever circumstances, gets what the
// first has: the classes are made once. No exception may reach the interpreter.
int fillModule(PyObject* made) {
  static PyObject* contents = nullptr;  // of the first, for the life of the process
  if (!isMainInterpreter()) return -1;
  if (contents != nullptr) return PyDict_Merge(PyModule_GetDict(made), contents, 0);
  try {
    auto module = py::reinterpret_borrow<py::module_>(made);
    fill(module);
    contents = PyDict_Copy(PyModule_GetDict(made));
    return contents != nullptr ? 0 : -1;
  } catch (py::error_already_set& error) {
    error.restore();
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_ImportError, error.what());
  }
  return -1;
}

PyObject* makeModule() {
  static PyModuleDef_Slot slots[] = {{Py_mod_exec, reinterpret_cast<void*>(fillModule)},
                                     {0, nullptr}};
  // With a byte of state the interpreter does not fill it again.
  static PyModuleDef definition = {
      PyModuleDef_HEAD_INIT, "cowl", nullptr, 1, nullptr, slots, nullptr, nullptr, nullptr};
  return PyModuleDef_Init(&definition);
}

}  // namespace

void addPythonModule() { PyImport_AppendInittab("cowl", makeModule); }
