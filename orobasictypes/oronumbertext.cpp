#include "orobasictypes/oronumbertext.h"

#include <charconv>
#include <limits>

namespace {

using oronumbers::Parsed;

void skipBlanks(std::string_view& text) {
  while (!text.empty() && oronumbers::isBlank(static_cast<uint8_t>(text.front()))) {
    text.remove_prefix(1);
  }
}

bool takeSign(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool negative = text.front() == '-';
  text.remove_prefix(1);
  return negative;
}

int digitValue(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  const char lower = static_cast<char>(character | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 99;
}

bool hasHexPrefix(std::string_view text) {
  return text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

// "0x" with no digit behind it is the number 0 and a letter.
bool isHexReal(std::string_view text) {
  if (!hasHexPrefix(text)) return false;
  text.remove_prefix(2);
  if (!text.empty() && text.front() == '.') text.remove_prefix(1);
  return !text.empty() && digitValue(text.front()) < 16;
}

// The power of ten (or two) of a number that was found out of range: its sign tells an overflow
// from an underflow, which lie hundreds apart.
int64_t magnitude(std::string_view number, bool hex) {
  const int64_t digitScale = hex ? 4 : 1;
  int64_t digits = 0;
  bool seenPoint = false;
  bool seenDigit = false;
  for (size_t i = 0; i < number.size(); ++i) {
    const char character = number[i];
    if (character == '.') {
      seenPoint = true;
    } else if (digitValue(character) < (hex ? 16 : 10)) {
      seenDigit = seenDigit || character != '0';
      if (!seenPoint && seenDigit) ++digits;
      if (seenPoint && !seenDigit) --digits;
    } else {
      std::string_view exponent = number.substr(i + 1);
      const bool negative = takeSign(exponent);
      int64_t value = 0;
      const auto end = exponent.data() + exponent.size();
      if (std::from_chars(exponent.data(), end, value).ec == std::errc::result_out_of_range) {
        value = std::numeric_limits<int64_t>::max() / 2;
      }
      return digits * digitScale + (negative ? -value : value);
    }
  }
  return digits * digitScale;
}

template <class T>
Parsed parse(std::string_view text, T& value) {
  value = 0;
  skipBlanks(text);
  const bool negative = takeSign(text);
  if (text.empty() || text.front() == '-') return Parsed::noNumber;  // one sign was taken
  const bool hex = isHexReal(text);
  if (hex) text.remove_prefix(2);
  const char* const end = text.data() + text.size();
  const auto format = hex ? std::chars_format::hex : std::chars_format::general;
  const auto [stop, error] = std::from_chars(text.data(), end, value, format);
  if (error == std::errc::invalid_argument) return Parsed::noNumber;
  if (error == std::errc::result_out_of_range) {
    const std::string_view number(text.data(), static_cast<size_t>(stop - text.data()));
    value = magnitude(number, hex) > 0 ? std::numeric_limits<T>::infinity() : T(0);
  }
  if (negative) value = -value;
  return error == std::errc() ? Parsed::ok : Parsed::outOfRange;
}

bool parseBase(std::string_view text, int base, int32_t& value) {
  value = 0;
  skipBlanks(text);
  const bool negative = takeSign(text);
  const uint64_t limit = negative ? uint64_t{1} << 63 : (uint64_t{1} << 63) - 1;
  uint64_t sum = 0;
  size_t digits = 0;
  if (base == 0) {
    base = hasHexPrefix(text) ? 16 : !text.empty() && text.front() == '0' ? 8 : 10;
    if (base == 16) {
      text.remove_prefix(2);
      digits = 1;  // the zero of the prefix is a number by itself
    }
  }
  for (; !text.empty() && digitValue(text.front()) < base; text.remove_prefix(1), ++digits) {
    const auto digit = static_cast<uint64_t>(digitValue(text.front()));
    sum = sum > (limit - digit) / static_cast<uint64_t>(base)
              ? limit
              : sum * static_cast<uint64_t>(base) + digit;
  }
  value = static_cast<int32_t>(static_cast<uint32_t>(negative ? 0 - sum : sum));
  return digits > 0;
}

}  // namespace

namespace oronumbers {

std::string_view printInt(long long value, Buffer& out) {
  const char* const end = std::to_chars(out, out + sizeof(Buffer), value).ptr;
  return {out, static_cast<size_t>(end - out)};
}

std::string_view printUnsigned(unsigned long long value, Buffer& out) {
  const char* const end = std::to_chars(out, out + sizeof(Buffer), value).ptr;
  return {out, static_cast<size_t>(end - out)};
}

std::string_view printFixed(double value, Buffer& out) {
  const char* const end =
      std::to_chars(out, out + sizeof(Buffer), value, std::chars_format::fixed, 6).ptr;
  return {out, static_cast<size_t>(end - out)};
}

std::string_view printScientific(double value, Buffer& out) {
  const char* const end =
      std::to_chars(out, out + sizeof(Buffer), value, std::chars_format::scientific, 6).ptr;
  return {out, static_cast<size_t>(end - out)};
}

Parsed parseReal(std::string_view text, float& value) { return parse(text, value); }
Parsed parseReal(std::string_view text, double& value) { return parse(text, value); }

bool parseInt(std::string_view text, int32_t& value) { return parseBase(text, 0, value); }
bool parseDecimal(std::string_view text, int32_t& value) { return parseBase(text, 10, value); }

}  // namespace oronumbers
