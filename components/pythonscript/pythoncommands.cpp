#include "components/pythonscript/pythoncommands.h"

#include <cmath>
#include <string>
#include <vector>

#include "components/pythonscript/pythoncloud.h"
#include "components/pythonscript/pythonerrors.h"
#include "components/pythonscript/pythontext.h"
#include "components/pythonscript/pythonwatcher.h"
#include "interfaces/ICommandCall.h"
#include "interfaces/ICommandTable.h"
#include "orobasictypes/sptr.h"

namespace py = pybind11;

namespace {

constexpr size_t kMostNumbers = 64;  // of one value; more is no value of any command
constexpr const char* kCloud = "cloud";

// The numbers of a number, or of lists, tuples and arrays of numbers, one after the other.
void gather(py::handle value, std::vector<double>& numbers, int depth) {
  const bool bytes = PyBytes_Check(value.ptr()) != 0 || PyByteArray_Check(value.ptr()) != 0;
  const bool nested =
      PySequence_Check(value.ptr()) != 0 && !py::isinstance<py::str>(value) && !bytes;
  if (nested && depth < 4) {
    for (const py::handle each : value) gather(each, numbers, depth + 1);
    return;
  }
  const double number = PyFloat_AsDouble(value.ptr());
  if (number == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
  if (numbers.size() == kMostNumbers) {
    raisePython(PyExc_ValueError, "there are too many numbers");
  }
  numbers.push_back(number);
}

void give(ICommandCall& call, const char* parameter, py::handle value) {
  if (value.is_none()) return;
  bool taken = false;
  if (py::isinstance<py::str>(value)) {
    taken = call.setText(parameter, applicationText(value));
  } else if (py::hasattr(value, "__fspath__")) {
    taken = call.setText(parameter, applicationText(value.attr("__fspath__")()));
  } else {
    std::vector<double> numbers;
    gather(value, numbers, 0);
    taken = call.setNumbers(parameter, numbers.data(), static_cast<int32_t>(numbers.size()));
  }
  if (!taken) throwPythonError(call.message());
}

// Values by place take the parameters in their order.
void giveAll(ICommandTable& table, int32_t command, ICommandCall& call, const py::args& places,
             const py::kwargs& names) {
  const int32_t parameters = table.parameterCount(command);
  if (static_cast<int32_t>(places.size()) > parameters) {
    raisePython(PyExc_TypeError, "%1 takes at most %2 values",
                OroString(table.commandName(command)), OroString(parameters));
  }
  for (int32_t i = 0; i < static_cast<int32_t>(places.size()); ++i) {
    const char* const name = table.parameterName(command, i);
    if (names.contains(name)) {
      raisePython(PyExc_TypeError, "the value %1 is given twice", OroString(name));
    }
    give(call, name, places[static_cast<size_t>(i)]);
  }
  for (const auto& [name, value] : names) {
    const std::string key = narrowText(name);
    if (key != kCloud) {
      give(call, key.c_str(), value);
    } else if (!value.is_none() && !call.setCloud(PythonCloud::of(value).object())) {
      throwPythonError(call.message());
    }
  }
}

// A single number that is whole is an int, several numbers are a tuple.
py::object resultOf(ICommandCall& call, int32_t result) {
  int32_t count = 0;
  const double* const numbers = call.resultNumbers(result, count);
  if (numbers == nullptr) return py::none();
  if (count > 1) {
    py::tuple all(count);
    for (int32_t i = 0; i < count; ++i) all[static_cast<size_t>(i)] = numbers[i];
    return all;
  }
  if (std::abs(numbers[0]) < 9e15 && numbers[0] == std::floor(numbers[0])) {
    return py::int_(static_cast<long long>(numbers[0]));
  }
  return py::float_(numbers[0]);
}

// To the handler of the script, which mostly raises KeyboardInterrupt.
void passInterruptOn() {
  PyErr_SetInterrupt();
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
}

py::object runCommand(int32_t command, const py::args& places, const py::kwargs& names) {
  const SPtr<ICommandTable> table;
  const IPtr<ICommandCall> call(table ? table->newCall(command) : nullptr);
  if (!call) raisePython(PyExc_RuntimeError, "the command is gone");
  giveAll(*table, command, *call, places, names);
  const IPtr<PythonWatcher> watcher(new PythonWatcher);
  const bool done = call->run(watcher.get());
  if (watcher->isInterrupted()) passInterruptOn();
  if (!done && call->wasStopped()) throwPythonCancelled();
  if (!done) throwPythonError(call->message());
  if (call->resultCount() == 0) return py::none();
  py::dict results;
  for (int32_t i = 0; i < call->resultCount(); ++i) {
    results[call->resultName(i)] = resultOf(*call, i);
  }
  return results;
}

// What help() shows, and cowl.help().
std::string helpOf(ICommandTable& table, int32_t command) {
  OroString text;
  std::string head;
  std::string values;
  for (int32_t i = 0; i < table.parameterCount(command); ++i) {
    const std::string name = table.parameterName(command, i);
    head += (i > 0 ? ", " : "") + name + (table.parameterRequired(command, i) ? "" : "=None");
    table.parameterHelp(command, i, text);
    values += "\n  " + name + ": " + text.toUtf8();
  }
  table.commandHelp(command, text);
  return std::string(table.commandName(command)) + "(" + head + ")\n" + text.toUtf8() + "." +
         values;
}

void showHelp() {
  const SPtr<ICommandTable> table;
  for (int32_t i = 0; table && i < table->commandCount(); ++i) {
    py::print(helpOf(*table, i) + "\n");
  }
}

}  // namespace

void definePythonCommands(py::module_& module) {
  const SPtr<ICommandTable> table;
  for (int32_t command = 0; table && command < table->commandCount(); ++command) {
    const char* const name = table->commandName(command);
    const std::string help = helpOf(*table, command);
    module.attr(name) = py::cpp_function(
        [command](const py::args& places, const py::kwargs& names) {
          return runCommand(command, places, names);
        },
        py::name(name), py::doc(help.c_str()), py::scope(module));
  }
  module.def("help", showHelp, "Prints what the commands do.");
}
