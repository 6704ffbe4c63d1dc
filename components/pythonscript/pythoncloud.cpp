#include "components/pythonscript/pythoncloud.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "components/pythonscript/pythonblocks.h"
#include "components/pythonscript/pythonclass.h"
#include "components/pythonscript/pythonerrors.h"
#include "components/pythonscript/pythontext.h"
#include "interfaces/IPointClouds.h"
#include "orobasictypes/sptr.h"

namespace py = pybind11;

namespace {

constexpr int kRows = py::array::c_style | py::array::forcecast;

// Stands for the list of the document's clouds, whatever it holds when it is asked.
struct PythonDocument {};

py::ssize_t cloudCount() {
  const SPtr<IPointClouds> clouds;
  return clouds ? clouds->count() : 0;
}

PythonCloud cloudAt(py::ssize_t index) {
  const py::ssize_t count = cloudCount();
  if (index < 0) index += count;
  const SPtr<IPointClouds> clouds;
  if (index < 0 || index >= count) {
    raisePython(PyExc_IndexError, "there is no cloud of this number");
  }
  return PythonCloud(clouds->cloud(static_cast<int32_t>(index)));
}

PythonCloud cloudNumbered(py::handle number) {
  const py::ssize_t index = PyNumber_AsSsize_t(number.ptr(), nullptr);  // a huge one is cut
  if (PyErr_Occurred() != nullptr) throw py::error_already_set();
  return cloudAt(index);
}

PythonCloud cloudNamed(py::handle name) {
  const SPtr<IPointClouds> clouds;
  const OroString wanted = applicationText(name);
  for (int32_t i = 0; clouds && i < clouds->count(); ++i) {
    const IPtr<IPointCloud> cloud(clouds->cloud(i));
    if (cloud->name() == wanted) return PythonCloud(cloud.get());
  }
  raiseKeyError(name);
}

py::list allClouds() {
  py::list all;
  for (py::ssize_t i = 0; i < cloudCount(); ++i) all.append(cloudAt(i));
  return all;
}

void expectRows(const py::array& array, int64_t rows, int dimensions) {
  const bool fits = array.ndim() == dimensions && array.shape(0) == rows &&
                    (dimensions == 1 || array.shape(1) == 3);
  if (!fits) {
    raisePython(PyExc_ValueError, "the array has another shape than the cloud, which has %1 points",
                OroString(std::to_string(rows).c_str()));
  }
}

double realOf(const py::object& value) {
  const double number = PyFloat_AsDouble(value.ptr());
  if (PyErr_Occurred() != nullptr) throw py::error_already_set();
  return number;
}

// Numbers of another type that are no colours would come out as others.
void expectColors(const py::array& rows) {
  if (rows.size() == 0) return;
  const auto least = realOf(rows.attr("min")());
  const auto most = realOf(rows.attr("max")());
  if (!(least >= 0 && most < 256)) raisePython(PyExc_ValueError, "colours go from 0 to 255");
}

void setColors(const PythonCloud& cloud, const py::object& value) {
  if (value.is_none()) {
    cloud.object()->setHasColors(false);
    return;
  }
  const py::array given(value);
  if (!py::isinstance<py::array_t<uint8_t>>(given)) expectColors(given);
  const py::array_t<uint8_t, kRows> rows(given);
  expectRows(rows, cloud.count(), 2);
  cloud.object()->setHasColors(true);
  const IPtr<IPointBlocks> blocks(cloud.object()->blocks());
  uint8_t* const colors = blocks->colors();
  const uint8_t* const from = rows.data();
  for (int64_t i = 0; colors != nullptr && i < cloud.count(); ++i) {
    std::copy_n(from + 3 * i, 3, colors + 4 * i);
  }
}

}  // namespace

PythonCloud PythonCloud::of(py::handle value) {
  if (py::isinstance<PythonCloud>(value)) return value.cast<PythonCloud>();
  if (py::isinstance<py::str>(value)) return cloudNamed(value);
  if (PyIndex_Check(value.ptr()) != 0) return cloudNumbered(value);
  raisePython(PyExc_TypeError, "a cloud, its number or its name is expected here");
}

py::str PythonCloud::name() const { return pythonText(cloud_->name()); }

py::array PythonCloud::points() const {
  const IPtr<IPointBlocks> blocks(cloud_->blocks());
  int64_t first = 0;
  int64_t size = 0;
  if (blocks->blockCount() == 1) {
    double* const xyz = blocks->positions(0, first, size);
    return PythonBlocks::pointArray(blocks, xyz, size);
  }
  py::array_t<double> copy({py::ssize_t{blocks->count()}, py::ssize_t{3}});
  double* const to = copy.mutable_data();
  for (int32_t block = 0; block < blocks->blockCount(); ++block) {
    const double* const xyz = blocks->positions(block, first, size);
    std::memcpy(to + 3 * first, xyz, static_cast<size_t>(size) * 3 * sizeof(double));
  }
  copy.attr("setflags")(py::arg("write") = false);
  return copy;
}

void PythonCloud::setPoints(const py::object& value) const {
  const py::array_t<double, kRows> points(value);
  expectRows(points, count(), 2);
  const IPtr<IPointBlocks> blocks(cloud_->blocks());
  // The array may show the storage itself.
  for (int32_t block = 0; block < blocks->blockCount(); ++block) {
    int64_t first = 0;
    int64_t size = 0;
    double* const xyz = blocks->positions(block, first, size);
    std::memmove(xyz, points.data() + 3 * first, static_cast<size_t>(size) * 3 * sizeof(double));
  }
}

py::object PythonCloud::colors() const {
  const IPtr<IPointBlocks> blocks(cloud_->blocks());
  return PythonBlocks::colorArray(blocks, 0, blocks->count());
}

py::array_t<bool> PythonCloud::selection() const {
  static_assert(sizeof(bool) == sizeof(uint8_t));
  // Making the array may run code of the script, and the cloud may change.
  for (;;) {
    const int64_t size = count();
    py::array_t<bool> flags(py::ssize_t{size});
    auto* const to = reinterpret_cast<uint8_t*>(flags.mutable_data());
    if (size == count() && cloud_->readSelection(0, size, to)) return flags;
  }
}

void PythonCloud::setSelection(const py::object& value) const {
  const py::array_t<bool, kRows> flags(value);
  expectRows(flags, count(), 1);
  cloud_->writeSelection(0, count(), reinterpret_cast<const uint8_t*>(flags.data()));
}

void PythonCloud::define(py::module_& module) {
  PythonBlocks::define(module);
  PythonClass<PythonCloud>(module, "Cloud", "A point cloud of the document.")
      .def_property_readonly("name", onPythonObject(&PythonCloud::name))
      .def("__len__", onPythonObject(&PythonCloud::count))
      .def("__repr__",
           [](const PythonCloud& self) {
             return py::str("<cowl.Cloud {!r}, {} points>").format(self.name(), self.count());
           })
      .def(
          "blocks", [](const PythonCloud& self) { return PythonBlocks(self.object()->blocks()); },
          "Walks the storage in blocks, to read and write without a copy.")
      .def_property(
          "points", onPythonObject(&PythonCloud::points), onPythonObject(&PythonCloud::setPoints),
          "All coordinates, (n, 3): the storage itself where it lies in one piece, else a "
          "copy that is not writable. Assigning an array writes all of them.")
      .def_property("colors", onPythonObject(&PythonCloud::colors), setColors,
                    "All colours, (n, 3), 0 to 255: the storage itself. None without colours.")
      .def_property("selection", onPythonObject(&PythonCloud::selection),
                    onPythonObject(&PythonCloud::setSelection),
                    "A flag for each point: a copy. Assigning an array selects.")
      .def_property_readonly(
          "selected_count", [](const PythonCloud& self) { return self.object()->selectedCount(); });
  PythonClass<PythonDocument>(module, "Document", "The clouds of the document, in their order.")
      .def("__len__", [](const PythonDocument&) { return cloudCount(); })
      .def("__getitem__",
           [](const PythonDocument&, const py::object& key) { return PythonCloud::of(key); })
      .def("__iter__", [](const PythonDocument&) { return py::iter(allClouds()); })
      .def_property_readonly("clouds", [](const PythonDocument&) { return allClouds(); });
  module.attr("document") = PythonDocument();
}
