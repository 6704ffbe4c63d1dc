#include "components/pythonscript/pythonsettings.h"

#include <limits>
#include <string>

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

std::string nameOf(const py::str& path) {
  const std::string name = path;
  if (name.find('\0') != name.npos) throw py::value_error("the path holds a character 0");
  return name;
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

int32_t wholeNumber(const py::object& value, int32_t least, int32_t most) {
  if (!py::isinstance<py::int_>(value)) throw py::type_error("the setting is a whole number");
  const long long number = value.cast<long long>();
  if (number < least || number > most) {
    throw py::value_error("the setting goes from " + std::to_string(least) + " to " +
                          std::to_string(most));
  }
  return static_cast<int32_t>(number);
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
  const double number = value.cast<double>();
  if (!(number >= least && number <= most)) {
    throw py::value_error("the value is outside the setting's range");
  }
  store.SetFloat(nullptr, path.c_str(), number);
}

void setText(IDataStore& store, const std::string& path, const py::object& value) {
  const OroString text = applicationText(value);
  if (text.length() >= store.GetCapacity(path.c_str(), nullptr)) {
    throw py::value_error("the text is too long for the setting");
  }
  store.SetOroString(nullptr, path.c_str(), text);
}

void declareParents(IDataStore& store, const std::string& path) {
  for (size_t at = path.find('/'); at != path.npos; at = path.find('/', at + 1)) {
    store.CreateDirectory(path.substr(0, at).c_str());
  }
}

}  // namespace

py::object PythonSettings::item(const py::str& path) const {
  const SPtr<IDataStore> store;
  py::object value = valueOf(store.get(), nameOf(path));
  if (value.is_none()) throw py::key_error(std::string(path));
  return value;
}

py::object PythonSettings::get(const py::str& path, const py::object& otherwise) const {
  const SPtr<IDataStore> store;
  py::object value = valueOf(store.get(), nameOf(path));
  return value.is_none() ? otherwise : value;
}

void PythonSettings::set(const py::str& path, const py::object& value) const {
  const SPtr<IDataStore> store;
  const std::string name = nameOf(path);
  switch (kindOf(store.get(), name)) {
    case IKelDataItem::kInt:
      return setWhole(*store, name, value);
    case IKelDataItem::kFloat:
      return setReal(*store, name, value);
    case IKelDataItem::kOroString:
      return setText(*store, name, value);
    case IKelDataItem::kString:
      throw py::type_error("the setting belongs to the program: " + name);
    default:
      throw py::key_error(name);
  }
}

bool PythonSettings::contains(const py::str& path) const {
  const SPtr<IDataStore> store;
  return !valueOf(store.get(), nameOf(path)).is_none();
}

void PythonSettings::declare(const py::str& path, const py::object& value) const {
  using Whole = std::numeric_limits<int32_t>;
  using Real = std::numeric_limits<double>;
  const SPtr<IDataStore> store;
  const std::string name = nameOf(path);
  if (!store) throw std::runtime_error("there is no settings store");
  if (kindOf(store.get(), name) != kNoKind) return;
  if (py::isinstance<py::int_>(value)) {
    const int32_t number = wholeNumber(value, Whole::min(), Whole::max());
    declareParents(*store, name);
    store->CreateInt(name.c_str(), number, Whole::min(), Whole::max(), 0);
  } else if (py::isinstance<py::float_>(value)) {
    declareParents(*store, name);
    store->CreateFloat(name.c_str(), value.cast<double>(), Real::lowest(), Real::max(), 0);
  } else {
    const OroString text = applicationText(value);
    if (text.length() >= kTextCapacity) throw py::value_error("the text is too long");
    declareParents(*store, name);
    store->CreateOroString(name.c_str(), kTextCapacity, text, 0);
  }
}

void PythonSettings::define(py::module_& module) {
  py::class_<PythonSettings>(module, "Settings")
      .def("__getitem__", &PythonSettings::item)
      .def("__setitem__", &PythonSettings::set)
      .def("__contains__", &PythonSettings::contains)
      .def("get", &PythonSettings::get, py::arg("path"), py::arg("default") = py::none())
      .def("declare", &PythonSettings::declare, py::arg("path"), py::arg("value"),
           "Makes a setting for this run, of the value's kind, unless it is there.");
  module.attr("settings") = PythonSettings();
}
