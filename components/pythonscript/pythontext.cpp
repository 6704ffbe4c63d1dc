#include "components/pythonscript/pythontext.h"

#include <bit>
#include <string>

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
  if (!py::isinstance<py::str>(text)) throw py::type_error("a text is expected here");
  const char* const name = std::endian::native == std::endian::little ? "utf-16-le" : "utf-16-be";
  PyObject* const encoded = PyUnicode_AsEncodedString(text.ptr(), name, kKeepSurrogates);
  if (encoded == nullptr) throw py::error_already_set();
  const auto holder = py::reinterpret_steal<py::bytes>(encoded);
  const auto* const units = reinterpret_cast<const char16_t*>(PyBytes_AS_STRING(encoded));
  const std::u16string copy(units, static_cast<size_t>(PyBytes_GET_SIZE(encoded)) / 2);
  if (copy.find(u'\0') != copy.npos) throw py::value_error("the text holds a character 0");
  return OroString(copy.c_str());
}
