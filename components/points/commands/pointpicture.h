// PointPicture: a picture of points as seen from far away along one of the axes.
//
//   PointPicture picture(800, 600, PointPicture::View::top);
//   picture.frame(bounds);
//   picture.draw(set, true, work);
//   write(picture.pixels());
//
// Of points that fall on the same pixel the nearest to the eye is seen. Where there are few, each
// is drawn larger. 7 bytes for each pixel. One thread.
#pragma once

#include <cstdint>
#include <vector>

#include "components/points/commands/pointbounds.h"

class PointSet;
class PointWork;

class PointPicture {
 public:
  enum class View { top, front, side };  // from above, from small y, from large x

  static constexpr int kLargestEdge = 16384;  // pixels

  // White. Requires: edges from 1 to kLargestEdge.
  PointPicture(int width, int height, View view);

  // Chooses scale and middle so that all of the box is in the picture. Requires: bounds.any().
  void frame(const PointBounds& bounds);
  // By the colours of the points, or by their height from blue over green to red. False when the
  // work was stopped. Requires: frame().
  bool draw(PointSet& set, bool byColor, PointWork& work);

  int width() const { return width_; }
  int height() const { return height_; }
  // Rows from the top, three bytes a pixel.
  const std::vector<uint8_t>& pixels() const { return pixels_; }

  // 0 is blue, 1 is red.
  static uint32_t colorOfHeight(double share);

 private:
  void drawBlock(const double* xyz, int64_t size, const uint32_t* colors);
  void put(int x, int y, float depth, uint32_t color);

  int width_;
  int height_;
  int right_;  // the axis that runs to the right
  int up_;
  int depth_;
  double toward_;     // 1 where larger coordinates are nearer, else -1
  double scale_ = 1;  // pixels for a unit
  double middle_[3] = {0, 0, 0};
  double least_ = 0;     // of the heights
  double height01_ = 0;  // one over their range, or 0
  int dot_ = 1;          // pixels
  std::vector<uint8_t> pixels_;
  std::vector<float> depths_;
};
