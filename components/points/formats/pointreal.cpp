#include "components/points/formats/pointreal.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

namespace {

// Powers of ten up to 10^22 are exact as doubles, and so are whole numbers up to 2^53. The quotient
// of two exact numbers is the nearest double to the true one.
constexpr double kRealPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr uint64_t kRealExactWhole = uint64_t{1} << 53;
constexpr int kRealMostDigits = 19;  // that 64 bits can gather

const char* takeRealDigits(const char* at, const char* last, uint64_t& whole) {
  for (; at != last; ++at) {
    const auto digit = static_cast<unsigned char>(*at - '0');
    if (digit > 9) break;
    whole = whole * 10 + digit;
  }
  return at;
}

const char* takeRealSlowly(const char* first, const char* last, double& value) {
  const auto [next, error] = std::from_chars(first, last, value);
  return error == std::errc{} ? next : nullptr;
}

}  // namespace

const char* pointTakeReal(const char* first, const char* last, double& value) {
  const bool isNegative = first != last && *first == '-';
  const char* const begin = first + isNegative;
  uint64_t whole = 0;
  const char* at = takeRealDigits(begin, last, whole);
  auto digits = at - begin;
  std::ptrdiff_t decimals = 0;
  if (at != last && *at == '.') {
    const char* const behindPoint = at + 1;
    at = takeRealDigits(behindPoint, last, whole);
    decimals = at - behindPoint;
    digits += decimals;
  }
  const bool hasExponent = at != last && (*at == 'e' || *at == 'E');
  if (digits < 1 || digits > kRealMostDigits || whole > kRealExactWhole || hasExponent) {
    return takeRealSlowly(first, last, value);
  }
  const double magnitude = static_cast<double>(whole) / kRealPowersOfTen[decimals];
  value = isNegative ? -magnitude : magnitude;
  return at;
}
