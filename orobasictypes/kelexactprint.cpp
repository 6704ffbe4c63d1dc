#include "orobasictypes/kelexactprint.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

using oronumbers::Buffer;
using oronumbers::Parsed;

// Literals of this size keep the messages without an allocation of ours.
struct Messages {
  const char* invalid;
  const char* range;
};
constexpr Messages floatMessages = {"invalid stof argument", "stof argument out of range"};
constexpr Messages doubleMessages = {"invalid stod argument", "stod argument out of range"};

template <class T>
T parseOrThrow(std::string_view text, const Messages& messages) {
  T value = 0;
  switch (oronumbers::parseReal(text, value)) {
    case Parsed::noNumber:
      throw std::invalid_argument(messages.invalid);
    case Parsed::outOfRange:
      throw std::out_of_range(messages.range);
    case Parsed::ok:
      break;
  }
  return value;
}

float parseBack(std::string_view text, float) { return kelParseFloat(text); }
double parseBack(std::string_view text, double) { return kelParseDouble(text); }

// An integer of the type Int, not converted before it is known to fit.
template <class Int, class T>
bool isInteger(T value) {
  constexpr T limit = -static_cast<T>(std::numeric_limits<Int>::min());
  return value >= -limit && value < limit && value == static_cast<T>(static_cast<Int>(value));
}

template <class Int, class T>
std::string_view printExact(T value, int precision, Buffer& out) {
  if (isInteger<Int>(value)) return oronumbers::printInt(static_cast<Int>(value), out);
  T bestError = std::numeric_limits<T>::max();
  Buffer attempt;
  size_t length = 0;
  for (; precision >= 0; --precision) {
    const char* const end = std::to_chars(attempt, attempt + sizeof attempt, value,
                                          std::chars_format::general, precision)
                                .ptr;
    const std::string_view text(attempt, static_cast<size_t>(end - attempt));
    const T error = std::abs(parseBack(text, value) - value);
    if (error > bestError) break;
    bestError = error;
    length = text.size();
    std::memcpy(out, attempt, length);
  }
  return {out, length};
}

}  // namespace

std::string_view kelExactPrint(float value, Buffer& out) {
  return printExact<int32_t>(value, 9, out);
}

std::string_view kelExactPrint(double value, Buffer& out) {
  return printExact<int64_t>(value, 17, out);
}

float kelParseFloat(std::string_view text) { return parseOrThrow<float>(text, floatMessages); }
double kelParseDouble(std::string_view text) { return parseOrThrow<double>(text, doubleMessages); }
