#include "components/pythonscript/pythonwatcher.h"

#include <pybind11/pybind11.h>

#include "components/pythonscript/pythonprogress.h"

bool PythonWatcher::Update(float) {
  if (!interrupted_) interrupted_ = PyOS_InterruptOccurred() != 0;
  return !interrupted_ && !pythonWorkCancelled();
}
