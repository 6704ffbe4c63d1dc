#include "orobasictypes/orostringformat.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "orobasictypes/kelpool.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orostring.h"

namespace {

// The front of the text that is flags, width and precision, so that no text can smuggle in another
// conversion.
std::string_view checkedSpecification(const KelCString& specification) {
  const std::string_view text = specification.c_str();
  const auto skip = [&text](size_t from, const char* characters) {
    const size_t end = text.find_first_not_of(characters, from);
    return end == text.npos ? text.size() : end;
  };
  constexpr char digits[] = "0123456789";
  size_t end = skip(skip(0, "-+ #0"), digits);
  if (end < text.size() && text[end] == '.') end = skip(end + 1, digits);
  return text.substr(0, end);
}

KelCString formatText(const OroStringFormat& format, const char* conversion) {
  const std::string_view checked = checkedSpecification(format.specification);
  const KelCString specification(checked.data(), static_cast<int>(checked.size()));
  return KelCString("%", specification.text(), conversion);
}

// The decimal point of the process's locale becomes ".".
void usePoint(char* text) {
  const char* const point = std::localeconv()->decimal_point;
  if (std::strcmp(point, ".") == 0) return;
  char* const hit = std::strstr(text, point);
  if (hit == nullptr) return;
  const char* const rest = hit + std::strlen(point);
  *hit = '.';
  std::memmove(hit + 1, rest, std::strlen(rest) + 1);
}

// Printed into 40 bytes, or in a block doubled from there until the text fits. A width that the C
// library refuses gives the empty text.
template <class Value>
OroString printed(const OroStringFormat& format, const char* conversion, Value value) {
  const KelCString text = formatText(format, conversion);
  char local[40];
  const int needed = std::snprintf(local, sizeof local, text.c_str(), value);
  if (needed < 0) return OroString::empty();
  if (static_cast<size_t>(needed) < sizeof local) {
    usePoint(local);
    return OroString(local);
  }
  int64_t room = sizeof local;
  while (room <= needed) room *= 2;
  if (room > INT32_MAX) kelOutOfMemory(room);
  int32_t capacity = 0;
  auto* const block = static_cast<char*>(kelPoolAlloc(static_cast<int32_t>(room), capacity));
  std::snprintf(block, static_cast<size_t>(room), text.c_str(), value);
  usePoint(block);
  OroString result(block);
  kelPoolFree(capacity, block);
  return result;
}

}  // namespace

OroString::OroString(int value, const OroStringFormat& format)
    : OroString(printed(format, "d", value)) {}

OroString::OroString(long value, const OroStringFormat& format)
    : OroString(printed(format, "ld", value)) {}

OroString::OroString(long long value, const OroStringFormat& format)
    : OroString(printed(format, "lld", value)) {}

OroString::OroString(double value, const OroStringFormat& format)
    : OroString(printed(format,
                        !format.useExponentForm ? "f"
                        : format.forceExponent  ? "e"
                                                : "g",
                        value)) {}
