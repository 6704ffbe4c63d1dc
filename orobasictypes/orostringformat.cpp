#include "orobasictypes/orostringformat.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "orobasictypes/kelpool.h"
#include "orobasictypes/orostring.h"

namespace {

// What the C language promises for one conversion; beyond it one C library refuses and another
// runs out of stack.
constexpr int largestNumber = 4095;

// Takes a number off the front of the text and appends it to the format.
void takeNumber(std::string_view& text, KelCString& format) {
  const size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  if (digits == 0) return;
  int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + digits, value);
  const bool small = error == std::errc() && value <= largestNumber;
  format.append(KelCString(small ? value : largestNumber).text());
  text.remove_prefix(digits);
}

// "%", the front of the format's text that is flags, width and precision, and the conversion: no
// text can smuggle in another one.
KelCString formatText(const OroStringFormat& format, const char* conversion) {
  std::string_view rest = format.layout.c_str();
  const size_t flags = std::min(rest.find_first_not_of("-+ #0"), rest.size());
  KelCString text("%", KelCString(rest.data(), static_cast<int>(flags)).text());
  rest.remove_prefix(flags);
  takeNumber(rest, text);
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    text.append('.');
    takeNumber(rest, text);
  }
  text.append(conversion);
  return text;
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

// Printed into 40 bytes, or into a block doubled from there until the text fits.
template <class Value>
OroString printed(const OroStringFormat& format, const char* conversion, Value value) {
  const KelCString text = formatText(format, conversion);
  char local[40];
  const int needed = std::snprintf(local, sizeof local, text.c_str(), value);
  if (needed < static_cast<int>(sizeof local)) {
    usePoint(local);
    return OroString(local);
  }
  int32_t room = sizeof local;
  while (room <= needed) room *= 2;
  int32_t capacity = 0;
  auto* const block = static_cast<char*>(kelPoolAlloc(room, capacity));
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
