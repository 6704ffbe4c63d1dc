#include "components/points/formats/pointdecimals.h"

#include <algorithm>

#include "components/points/formats/pointcloudhead.h"

namespace {

constexpr int kMostFixedDecimals = 15;

}  // namespace

void PointDecimals::take(const char* text, const char* end) {
  ++seen_;
  const char* point = nullptr;
  for (const char* at = text; at != end; ++at) {
    if (*at == '.') point = at;
    if (*at == 'e' || *at == 'E') fixed_ = false;
  }
  const int digits = point == nullptr ? 0 : static_cast<int>(end - point) - 1;
  if (digits > kMostFixedDecimals) fixed_ = false;
  most_ = std::max(most_, digits);
}

int PointDecimals::found() const { return fixed_ && seen_ > 0 ? most_ : PointCloudHead::kShortest; }
