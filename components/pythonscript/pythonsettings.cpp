#include "components/pythonscript/pythonsettings.h"

#include <limits>
#include <string>

#include "components/pythonscript/pythonclass.h"
#include "components/pythonscript/pythonerrors.h"
#include "components/pythonscript/pythontext.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IKelDataItem.h"
#include "orobasictypes/sptr.h"

namespace py = pybind11;

namespace {

constexpr int32_t kTextCapacity = 32767;
constexpr int32_t kNoKind = -1;

// Items without a value of their own, events, are none to a script.
int32_t kindOf(IDataStore* store, const std::string& path) {
  int32_t kind = kNoKind;
  return store != nullptr && store->GetType(path.c_str(), kind) ? kind : kNoKind;
}

py::object valueOf(IDataStore* store, const std::string& path) {
  switch (kindOf(store, path)) {
    case IKelDataItem::kInt:
      return py::int_(store->GetInt(path.c_str(), nullptr));
    case IKelDataItem::kFloat:
      return py::float_(store->GetFloat(path.c_str(), nullptr));
    case IKelDataItem::kString:
      return pythonText(OroString(store->GetString(path.c_str(), nullptr)));
    case IKelDataItem::kOroString:
      return pythonText(store->GetOroString(path.c_str(), nullptr));
    default:
      return py::none();
  }
}

// As Python writes it.
OroString numberText(const py::object& number) { return applicationText(py::str(number)); }

[[noreturn]] void refuseRange(const py::object& least, const py::object& most) {
  raisePython(PyExc_ValueError, "the setting goes from %1 to %2", numberText(least),
              numberText(most));
}

int32_t wholeNumber(const py::object& value, int32_t least, int32_t most) {
  if (PyIndex_Check(value.ptr()) == 0) {
    raisePython(PyExc_TypeError, "the setting is a whole number");
  }
  PyObject* const whole = PyNumber_Index(value.ptr());
  if (whole == nullptr) throw py::error_already_set();
  int overflow = 0;
  const long long number =
      PyLong_AsLongLongAndOverflow(py::reinterpret_steal<py::object>(whole).ptr(), &overflow);
  if (overflow != 0 || number < least || number > most) {
    refuseRange(py::int_(least), py::int_(most));
  }
  return static_cast<int32_t>(number);
}

double realNumber(const py::object& value, double least, double most) {
  const double number = PyFloat_AsDouble(value.ptr());
  if (PyErr_Occurred() != nullptr) throw py::error_already_set();
  if (!(number >= least && number <= most)) refuseRange(py::float_(least), py::float_(most));
  return number;
}

OroString shortText(const py::object& value, int32_t capacity) {
  const OroString text = applicationText(value);
  if (text.length() >= capacity) {
    raisePython(PyExc_ValueError, "the setting takes at most %1 characters",
                OroString(capacity - 1));
  }
  return text;
}

void setWhole(IDataStore& store, const std::string& path, const py::object& value) {
  int32_t least = 0;
  int32_t most = 0;
  store.GetIntRange(path.c_str(), least, most, nullptr);
  store.SetInt(nullptr, path.c_str(), wholeNumber(value, least, most));
}

void setReal(IDataStore& store, const std::string& path, const py::object& value) {
  double least = 0;
  double most = 0;
  store.GetFloatRange(path.c_str(), least, most, nullptr);
  store.SetFloat(nullptr, path.c_str(), realNumber(value, least, most));
}

void setText(IDataStore& store, const std::string& path, const py::object& value) {
  const int32_t capacity = store.GetCapacity(path.c_str(), nullptr);
  store.SetOroString(nullptr, path.c_str(), shortText(value, capacity));
}

void declareParents(IDataStore& store, const std::string& path) {
  for (size_t at = path.find('/'); at != path.npos; at = path.find('/', at + 1)) {
    store.CreateDirectory(path.substr(0, at).c_str());
  }
}

// Whether each part of the path has a name.
bool isPath(const std::string& path) {
  return !path.empty() && path.front() != '/' && path.back() != '/' && path.find("//") == path.npos;
}

// Makes a setting of the value's kind; false for a path that the store refuses.
bool create(IDataStore& store, const std::string& path, const py::object& value) {
  using Whole = std::numeric_limits<int32_t>;
  using Real = std::numeric_limits<double>;
  const char* const name = path.c_str();
  if (py::isinstance<py::float_>(value)) {
    const double number = realNumber(value, Real::lowest(), Real::max());
    declareParents(store, path);
    store.CreateFloat(name, number, Real::lowest(), Real::max(), 0);
  } else if (PyIndex_Check(value.ptr()) != 0) {
    const int32_t number = wholeNumber(value, Whole::min(), Whole::max());
    declareParents(store, path);
    store.CreateInt(name, number, Whole::min(), Whole::max(), 0);
  } else {
    const OroString text = shortText(value, kTextCapacity);
    declareParents(store, path);
    store.CreateOroString(name, kTextCapacity, text, 0);
  }
  return kindOf(&store, path) != kNoKind;
}

}  // namespace

py::object PythonSettings::item(const py::object& path) const {
  const SPtr<IDataStore> store;
  py::object value = valueOf(store.get(), narrowText(path));
  if (value.is_none()) raiseKeyError(path);
  return value;
}

py::object PythonSettings::get(const py::object& path, const py::object& otherwise) const {
  const SPtr<IDataStore> store;
  py::object value = valueOf(store.get(), narrowText(path));
  return value.is_none() ? otherwise : value;
}

void PythonSettings::set(const py::object& path, const py::object& value) const {
  const SPtr<IDataStore> store;
  const std::string name = narrowText(path);
  switch (kindOf(store.get(), name)) {
    case IKelDataItem::kInt:
      return setWhole(*store, name, value);
    case IKelDataItem::kFloat:
      return setReal(*store, name, value);
    case IKelDataItem::kOroString:
      return setText(*store, name, value);
    case IKelDataItem::kString:
      raisePython(PyExc_TypeError, "the setting %1 belongs to the program", applicationText(path));
    default:
      raiseKeyError(path);
  }
}

bool PythonSettings::contains(const py::object& path) const {
  const SPtr<IDataStore> store;
  return !valueOf(store.get(), narrowText(path)).is_none();
}

void PythonSettings::declare(const py::object& path, const py::object& value) const {
  const SPtr<IDataStore> store;
  const std::string name = narrowText(path);
  if (kindOf(store.get(), name) != kNoKind) return;
  if (!store || !isPath(name) || !create(*store, name, value)) {
    raisePython(PyExc_ValueError, "a setting named \"%1\" cannot be made", applicationText(path));
  }
}

void PythonSettings::define(py::module_& module) {
  PythonClass<PythonSettings>(module, "Settings", "The settings of the application.")
      .def("__getitem__", onPythonObject(&PythonSettings::item))
      .def("__setitem__", onPythonObject(&PythonSettings::set))
      .def("__contains__", onPythonObject(&PythonSettings::contains))
      .def("get", onPythonObject(&PythonSettings::get), py::arg("path"),
           py::arg("default") = py::none())
      .def("declare", onPythonObject(&PythonSettings::declare), py::arg("path"), py::arg("value"),
           "Makes a setting for this run, of the value's kind, unless it is there.");
  module.attr("settings") = PythonSettings();
}
