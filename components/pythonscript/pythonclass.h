// PythonClass: a class of the module `cowl`, of whose objects the application alone makes any.
//
//   PythonClass<PythonCloud> cloud(module, "Cloud", "A point cloud of the document.");
//   cloud.def("__len__", onPythonObject(&PythonCloud::count));
//
// A script can neither make an object of it, nor derive from it, nor change it, nor turn an object
// of one class into one of another: each of these would end in C++ on an object that is none. The
// class is closed when the variable goes. Needs the interpreter's lock.
#pragma once

#include <pybind11/pybind11.h>

#include <utility>

// Lets a script have TypeError where it makes an object of the base that all classes share. Call
// once, before the first script.
void guardPythonBase();

void closePythonClass(PyTypeObject* type);

template <class T>
class PythonClass : public pybind11::class_<T> {
 public:
  PythonClass(pybind11::module_& module, const char* name, const char* help)
      : pybind11::class_<T>(module, name, help, pybind11::is_final()) {}
  ~PythonClass() { closePythonClass(reinterpret_cast<PyTypeObject*>(this->ptr())); }
  PythonClass(const PythonClass&) = delete;
  PythonClass& operator=(const PythonClass&) = delete;
};

// A member function for def(), which would call it on a null object where a script gives None.
template <class T, class Result, class... Values>
auto onPythonObject(Result (T::*member)(Values...)) {
  return [member](T& self, Values... values) -> Result {
    return (self.*member)(std::forward<Values>(values)...);
  };
}
template <class T, class Result, class... Values>
auto onPythonObject(Result (T::*member)(Values...) const) {
  return [member](const T& self, Values... values) -> Result {
    return (self.*member)(std::forward<Values>(values)...);
  };
}
