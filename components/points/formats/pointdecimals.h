// PointDecimals: finds out with how many digits behind the point a text tells its coordinates.
//
//   decimals.look(first, end);  // for one coordinate after the other
//   head.decimals = decimals.found();
//
// The way a file writes its numbers shows in its first points; the rest need not be looked at. A
// plain value.
#pragma once

#include <cstddef>

class PointDecimals {
 public:
  // Looks at the text of one coordinate.
  void look(const char* text, const char* end) {
    if (seen_ < kSample) take(text, end);
  }
  // 0 to 15, or PointCloudHead::kShortest where there is no fixed number.
  int found() const;

 private:
  static constexpr size_t kSample = 3000;

  void take(const char* text, const char* end);

  size_t seen_ = 0;  // coordinates
  int most_ = 0;
  bool fixed_ = true;  // none was in exponent form or too long
};
