#include "components/pythonscript/pythoninterpreter.h"

#include <pybind11/eval.h>
#include <pybind11/pybind11.h>

#include <csignal>

#include "components/pythonscript/pythonclass.h"
#include "components/pythonscript/pythonmodule.h"
#include "components/pythonscript/pythonrunner.h"
#include "components/pythonscript/pythontext.h"
#include "orobasictypes/orosharedsymbols.h"
#include "orobasictypes/orotranslate.h"

namespace py = pybind11;

namespace {

OroString startFailure(const OroString& reason) {
  OroString text;
  return oroTranslate(text, "The script engine cannot start: %1", reason);
}

OroString startFailure(const PyStatus& status) { return startFailure(OroString(status.err_msg)); }

// Texts are UTF-8 whatever the locale says. Blocks come from the system one by one, so that tools
// that watch memory see each of them.
PyStatus preinitialize() {
  PyPreConfig config;
  PyPreConfig_InitIsolatedConfig(&config);
  config.utf8_mode = 1;
  config.allocator = PYMEM_ALLOCATOR_MALLOC;
  return Py_PreInitialize(&config);
}

PyStatus initialize() {
  PyConfig config;
  PyConfig_InitIsolatedConfig(&config);
  config.write_bytecode = 0;
  PyStatus status = PyStatus_Ok();
#ifdef COWL_PYTHON_HOME
  status = PyConfig_SetBytesString(&config, &config.home, COWL_PYTHON_HOME);
#endif
  if (!PyStatus_Exception(status)) status = Py_InitializeFromConfig(&config);
  PyConfig_Clear(&config);
  return status;
}

// Python's signal module takes over the user's interrupt as soon as it is imported. Outside a
// script it belongs to the host, so what stood there before comes back.
class KeptInterrupt {
 public:
  KeptInterrupt() : before_(PyOS_getsig(SIGINT)) {}
  ~KeptInterrupt() { PyOS_setsig(SIGINT, before_); }
  KeptInterrupt(const KeptInterrupt&) = delete;
  KeptInterrupt& operator=(const KeptInterrupt&) = delete;

 private:
  PyOS_sighandler_t before_;
};

// While it lives, the user's interrupt is Python's.
class Interruptible {
 public:
  Interruptible() {
    const py::module_ signals = py::module_::import("signal");
    signals.attr("signal")(signals.attr("SIGINT"), signals.attr("default_int_handler"));
  }

 private:
  KeptInterrupt kept_;  // comes first, so that it holds what stood there before
};

}  // namespace

OroString PythonInterpreter::start() {
  const KeptInterrupt kept;
  PyStatus status = preinitialize();
  if (PyStatus_Exception(status)) return startFailure(status);
  // Python's extension libraries take its symbols from wherever they are.
  oroShareSymbols(reinterpret_cast<const void*>(&Py_IsInitialized));
  addPythonModule();
  status = initialize();
  if (PyStatus_Exception(status)) return startFailure(status);
  try {
    guardPythonBase();
    py::dict names;
    names["__builtins__"] = py::module_::import("builtins");
    py::exec(pythonRunnerSource, names);
    runner_ = py::object(names["run"]).release().ptr();
  } catch (const std::exception& error) {
    return startFailure(OroString::fromUtf8(error.what()));
  }
  return OroString();
}

PythonEnd PythonInterpreter::run(const char* source, size_t size, const OroString& path,
                                 const OroString& arguments) {
  if (runner_ == nullptr) {
    OroString problem;
    if (Py_IsInitialized() != 0) {
      return {startFailure(oroTranslate(problem, "an earlier start failed"))};
    }
    problem = start();
    if (!problem.isEmpty()) return {problem};
  }
  PythonEnd end = call(source, size, path, arguments);
  // One that came when the script had ended must not meet the next one.
  if (PyErr_CheckSignals() != 0) {
    end.interrupted |= PyErr_ExceptionMatches(PyExc_KeyboardInterrupt) != 0;
    PyErr_Clear();
  }
  return end;
}

PythonEnd PythonInterpreter::call(const char* source, size_t size, const OroString& path,
                                  const OroString& arguments) const {
  try {
    const Interruptible interruptible;
    const py::tuple end =
        py::handle(runner_)(py::bytes(source, size), pythonText(path), pythonText(arguments));
    const py::object failure = end[0];
    return {failure.is_none() ? OroString() : applicationText(failure), end[1].cast<bool>()};
  } catch (const py::error_already_set& error) {
    // An interrupt between the script and its end, or a text that cannot be shown.
    return {OroString::fromUtf8(error.what()), error.matches(PyExc_KeyboardInterrupt)};
  } catch (const std::exception& error) {
    return {OroString::fromUtf8(error.what())};
  } catch (...) {
    OroString problem;
    return {oroTranslate(problem, "The script ended for an unknown reason")};
  }
}
