#include "components/points/formats/lasgrid.h"

#include <algorithm>
#include <cmath>

namespace {

// A step and an offset in steps add up exactly below this.
constexpr double kExactSteps = 4503599627370496.0;

constexpr double kGridPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

}  // namespace

LasGrid::LasGrid(double scale, double offset)
    : scale_(scale), offset_(offset), factor_(scale), shift_(offset), divisor_(1) {
  for (int d = 0; d <= kMostDecimals; ++d) {
    const double steps = offset * kGridPowersOfTen[d];
    if (1 / kGridPowersOfTen[d] != scale || std::fabs(steps) > kExactSteps) continue;
    const double whole = std::nearbyint(steps);
    if (whole / kGridPowersOfTen[d] != offset) continue;
    factor_ = 1;
    shift_ = whole;
    divisor_ = kGridPowersOfTen[d];
    decimals_ = d;
  }
}

int64_t LasGrid::raw(double coordinate) const {
  const double steps = decimals_ < 0 ? (coordinate - offset_) / scale_
                                     : std::nearbyint(coordinate * divisor_) - shift_;
  constexpr double kMost = 9007199254740992.0;
  return static_cast<int64_t>(std::clamp(std::nearbyint(steps), -kMost, kMost));
}

double LasGrid::powerOfTen(int exponent) { return kGridPowersOfTen[exponent]; }
