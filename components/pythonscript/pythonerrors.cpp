#include "components/pythonscript/pythonerrors.h"

#include <string>

#include "components/pythonscript/pythontext.h"
#include "orobasictypes/orotranslate.h"

namespace py = pybind11;

namespace {

// For the life of the process, as the interpreter.
PyObject* errorClass = nullptr;
PyObject* cancelledClass = nullptr;

PyObject* newClass(py::module_& module, const char* name, PyObject* base) {
  const std::string whole = std::string("cowl.") + name;
  PyObject* const made = PyErr_NewException(whole.c_str(), base, nullptr);
  if (made == nullptr) throw py::error_already_set();
  module.attr(name) = py::handle(made);
  return made;
}

[[noreturn]] void raise(PyObject* type, const OroString& text) {
  PyErr_SetObject(type, pythonText(text).ptr());
  throw py::error_already_set();
}

}  // namespace

void definePythonErrors(py::module_& module) {
  errorClass = newClass(module, "Error", PyExc_RuntimeError);
  cancelledClass = newClass(module, "Cancelled", errorClass);
}

void raisePython(PyObject* type, const char* key, const OroString& a1, const OroString& a2) {
  OroString text;
  raise(type, oroTranslate(text, key, a1, a2));
}

void raiseKeyError(py::handle wanted) {
  PyErr_SetObject(PyExc_KeyError, wanted.ptr());
  throw py::error_already_set();
}

void throwPythonError(const OroString& text) { raise(errorClass, text); }

void throwPythonCancelled() {
  OroString text;
  oroTranslate(text, "The work was stopped");
  raise(cancelledClass, text);
}
