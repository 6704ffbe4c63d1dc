#include "components/points/formats/pointnumbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

// Whole numbers up to 2^53 are exact as doubles, and powers of ten up to 10^22.
constexpr double kExactWhole = 9007199254740992.0;
constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
constexpr int kMostDecimals = 15;

// The longest has 24 characters.
char* shortest(char* out, double value) {
  return std::to_chars(out, out + PointNumberText::kRoom, value).ptr;
}

}  // namespace

PointNumberText::PointNumberText(int decimals)
    : decimals_(decimals > kMostDecimals ? kShortest : decimals),
      scale_(kPowersOfTen[std::max(decimals_, 0)]) {}

// value * 10^d rounded to a whole number w gives the text w with a point in it. That text reads
// back as the double nearest to w / 10^d; both are exact, so one division tells whether it is the
// value itself.
char* PointNumberText::put(char* out, double value) const {
  if (decimals_ < 0 || std::signbit(value) != (value < 0)) return shortest(out, value);
  const double scaled = std::nearbyint(std::fabs(value) * scale_);
  if (scaled >= kExactWhole || scaled / scale_ != std::fabs(value)) return shortest(out, value);
  if (value < 0) *out++ = '-';
  const auto digits = static_cast<uint64_t>(scaled);
  const auto unit = static_cast<uint64_t>(scale_);
  out = putWhole(out, digits / unit);
  if (decimals_ == 0) return out;
  *out = '.';
  uint64_t rest = digits % unit;
  for (int i = decimals_; i > 0; --i, rest /= 10) out[i] = static_cast<char>('0' + rest % 10);
  return out + decimals_ + 1;
}

char* PointNumberText::putWhole(char* out, uint64_t value) {
  return std::to_chars(out, out + kRoom, value).ptr;
}
