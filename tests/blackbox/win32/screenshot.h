#pragma once

// What the display shows, taken by withdisplay.py from outside of the system under test. It stays
// in the build folder for people to look at.
//
//   const tests::Screenshot shot("question");
//   EXPECT_GT(shot.countColours({0, 0, shot.width(), shot.height()}), 2);

#include <cstdint>
#include <string>

namespace tests {

/// A part of the screen, in pixels; right and bottom lie outside.
struct Area {
  int left, top, right, bottom;
};

class Screenshot {
 public:
  /// Waits for it; empty after half a minute without one.
  explicit Screenshot(const std::string& name);

  int width() const { return width_; }
  int height() const { return height_; }
  /// 0xRRGGBB; black outside of the picture.
  std::uint32_t colourAt(int x, int y) const;
  /// How many colours the area has; each is counted once.
  int countColours(const Area& area) const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::string pixels_;  ///< three bytes each, by rows
};

}  // namespace tests
