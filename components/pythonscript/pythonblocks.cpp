#include "components/pythonscript/pythonblocks.h"

#include "components/pythonscript/pythonclass.h"

namespace py = pybind11;

namespace {

constexpr py::ssize_t kReal = sizeof(double);

// What an array holds on to.
py::capsule holderOf(const IPtr<IPointBlocks>& blocks) {
  return py::capsule(new IPtr<IPointBlocks>(blocks),
                     [](void* held) { delete static_cast<IPtr<IPointBlocks>*>(held); });
}

}  // namespace

py::array PythonBlocks::pointArray(const IPtr<IPointBlocks>& blocks, double* xyz, int64_t size) {
  return py::array_t<double>({py::ssize_t{size}, py::ssize_t{3}}, {3 * kReal, kReal}, xyz,
                             holderOf(blocks));
}

py::object PythonBlocks::colorArray(const IPtr<IPointBlocks>& blocks, int64_t first, int64_t size) {
  constexpr py::ssize_t kColor = 4;  // bytes of one, of which the last is no channel
  uint8_t* const colors = blocks->colors();
  if (colors == nullptr) return py::none();
  return py::array_t<uint8_t>({py::ssize_t{size}, py::ssize_t{3}}, {kColor, py::ssize_t{1}},
                              colors + kColor * first, holderOf(blocks));
}

PythonBlock PythonBlocks::next() {
  int64_t first = 0;
  int64_t size = 0;
  double* const xyz = blocks_->positions(at_, first, size);
  if (xyz == nullptr) throw py::stop_iteration();
  ++at_;
  return {first, pointArray(blocks_, xyz, size), colorArray(blocks_, first, size)};
}

void PythonBlocks::define(py::module_& module) {
  PythonClass<PythonBlock>(module, "Block", "Points that lie in one piece.")
      .def_readonly("first", &PythonBlock::first, "The number of the first point, from 0.")
      .def_readonly("points", &PythonBlock::points, "The coordinates, (n, 3), to read and write.")
      .def_readonly("colors", &PythonBlock::colors,
                    "The colours, (n, 3), 0 to 255, to read and write; None without colours.")
      .def("__len__", [](const PythonBlock& block) { return block.points.shape(0); });
  PythonClass<PythonBlocks>(module, "Blocks", "Walks the storage of a cloud.")
      .def("__iter__", [](PythonBlocks& self) -> PythonBlocks& { return self; })
      .def("__next__", onPythonObject(&PythonBlocks::next));
}
