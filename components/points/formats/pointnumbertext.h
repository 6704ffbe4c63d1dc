// PointNumberText: writes coordinates as text that reads back as exactly the same double.
//
// With the given number of digits behind the point where that is enough, otherwise in the shortest
// form that is. No allocation; the caller brings the buffer. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>

class PointNumberText {
 public:
  // Bytes that a number never exceeds.
  static constexpr size_t kRoom = 32;
  static constexpr int kShortest = -1;

  // `decimals` from 0 to 15, or kShortest.
  explicit PointNumberText(int decimals);

  // Writes the number and gives its end. Requires: kRoom bytes at `out`.
  char* put(char* out, double value) const;
  static char* putWhole(char* out, uint64_t value);

 private:
  int decimals_;
  double scale_;  // 10 to the power of decimals_
};
