#include "components/pythonscript/pythonprogress.h"

#include <memory>

#include "components/pythonscript/pythonclass.h"
#include "components/pythonscript/pythonerrors.h"
#include "components/pythonscript/pythontext.h"
#include "interfaces/IGuiBusyState.h"
#include "interfaces/IInfoBar.h"
#include "interfaces/IOroProgress.h"
#include "orobasictypes/sptr.h"

namespace py = pybind11;

bool pythonWorkCancelled() {
  const SPtr<IOroProgress> service;
  if (service) return service->IsCancelled();
  const SPtr<IGuiBusyState> busy;  // of a run without a user interface: the same object
  auto* const progress = oroQuery<IOroProgress>(busy.get());
  return progress != nullptr && progress->IsCancelled();
}

PythonProgress::PythonProgress(const py::object& text) : text_(applicationText(text)) {}

void PythonProgress::enter() {
  if (running_) raisePython(PyExc_RuntimeError, "the step runs already");
  running_ = true;
  percent_ = -1;
  const SPtr<IGuiBusyState> busy;
  if (busy) busy->startBusy(text_, 0, this);
}

void PythonProgress::leave() {
  if (!running_) return;
  running_ = false;
  const SPtr<IGuiBusyState> busy;
  if (busy) busy->stopBusy(0, 0, this);
}

void PythonProgress::update(const py::object& value) {
  const double fraction = PyFloat_AsDouble(value.ptr());
  if (PyErr_Occurred() != nullptr) throw py::error_already_set();
  if (!(fraction >= 0 && fraction <= 1)) {
    raisePython(PyExc_ValueError, "a fraction goes from 0 to 1");
  }
  if (pythonWorkCancelled()) throwPythonCancelled();
  const auto percent = static_cast<int32_t>(fraction * 100);
  if (!running_ || percent == percent_) return;
  percent_ = percent;
  const SPtr<IInfoBar> bar;
  if (bar) bar->setPercent(percent);
}

void PythonProgress::define(py::module_& module) {
  PythonClass<PythonProgress>(module, "Step", "A long step, shown while its block runs.")
      .def("__enter__",
           [](PythonProgress& self) -> PythonProgress& {
             self.enter();
             return self;
           })
      .def("__exit__", [](PythonProgress& self, const py::args&) { self.leave(); })
      .def("update", onPythonObject(&PythonProgress::update), py::arg("fraction"),
           "Shows how far the step is, from 0 to 1; raises Cancelled when it is to stop.");
  module.def(
      "progress", [](const py::object& text) { return std::make_unique<PythonProgress>(text); },
      py::arg("text"), "A step of that name; it runs while its block does.");
}
