#include "components/pythonscript/pythonclass.h"

namespace py = pybind11;

namespace {

// How pybind11 makes an object; it throws through Python where it cannot.
newfunc plainNew = nullptr;

PyObject* checkedNew(PyTypeObject* type, PyObject* places, PyObject* names) {
  try {
    if (!py::detail::all_type_info(type).empty()) return plainNew(type, places, names);
    PyErr_Format(PyExc_TypeError, "cannot create '%.100s' instances", type->tp_name);
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_RuntimeError, error.what());
  }
  return nullptr;
}

}  // namespace

void guardPythonBase() {
  PyObject* const base = py::detail::get_internals().instance_base;
  auto* const type = reinterpret_cast<PyTypeObject*>(base);
  plainNew = std::exchange(type->tp_new, checkedNew);
}

void closePythonClass(PyTypeObject* type) {
  type->tp_new = nullptr;
  type->tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_IMMUTABLETYPE;
  PyType_Modified(type);
}
