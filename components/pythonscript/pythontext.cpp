#include "components/pythonscript/pythontext.h"

#include <bit>
#include <string>

#include "components/pythonscript/pythonerrors.h"

namespace py = pybind11;

namespace {

constexpr const char* kKeepSurrogates = "surrogatepass";

}  // namespace

py::str pythonText(const OroString& text) {
  int order = std::endian::native == std::endian::little ? -1 : 1;
  const auto bytes = static_cast<Py_ssize_t>(text.length()) * 2;
  PyObject* const made = PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.wideText()),
                                               bytes, kKeepSurrogates, &order);
  if (made == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(made);
}

OroString applicationText(py::handle text) {
  if (!py::isinstance<py::str>(text)) {
    raisePython(PyExc_TypeError, "a text is expected here");
  }
  const char* const name = std::endian::native == std::endian::little ? "utf-16-le" : "utf-16-be";
  PyObject* const encoded = PyUnicode_AsEncodedString(text.ptr(), name, kKeepSurrogates);
  if (encoded == nullptr) throw py::error_already_set();
  const auto holder = py::reinterpret_steal<py::bytes>(encoded);
  const auto* const units = reinterpret_cast<const char16_t*>(PyBytes_AS_STRING(encoded));
  const std::u16string copy(units, static_cast<size_t>(PyBytes_GET_SIZE(encoded)) / 2);
  if (copy.find(u'\0') != copy.npos) {
    raisePython(PyExc_ValueError, "the text holds a character 0");
  }
  return OroString(copy.c_str());
}

std::string narrowText(py::handle text) {
  applicationText(text);  // refuses what is none
  Py_ssize_t size = 0;
  const char* const bytes = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
  if (bytes == nullptr) throw py::error_already_set();
  return {bytes, static_cast<size_t>(size)};
}
