#include "components/points/commands/pointpicture.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"

namespace {

constexpr double kMargin = 0.03;  // of the picture, on each side
constexpr int64_t kPictureBlock = 4096;
constexpr int kLargestDot = 4;     // pixels
constexpr double kOverlap = 1.25;  // dots hide the gaps between uneven points

uint32_t channel(double value) {
  return static_cast<uint32_t>(std::clamp(value, 0.0, 1.0) * 255 + 0.5);
}

}  // namespace

PointPicture::PointPicture(int width, int height, View view)
    : width_(width),
      height_(height),
      right_(view == View::side ? 1 : 0),
      up_(view == View::top ? 1 : 2),
      depth_(view == View::top     ? 2
             : view == View::front ? 1
                                   : 0),
      toward_(view == View::front ? -1 : 1),
      pixels_(static_cast<size_t>(width) * static_cast<size_t>(height) * 3, 255),
      depths_(static_cast<size_t>(width) * static_cast<size_t>(height),
              -std::numeric_limits<float>::infinity()) {}

uint32_t PointPicture::colorOfHeight(double share) {
  const double red = 1.5 - std::abs(4 * share - 3);
  const double green = 1.5 - std::abs(4 * share - 2);
  const double blue = 1.5 - std::abs(4 * share - 1);
  return channel(red) | channel(green) << 8 | channel(blue) << 16 | 0xFF000000;
}

void PointPicture::frame(const PointBounds& bounds) {
  double range[3];
  for (int axis = 0; axis < 3; ++axis) {
    // Halves, so that the range of the largest doubles is none too large.
    middle_[axis] = bounds.least()[axis] / 2 + bounds.most()[axis] / 2;
    range[axis] = bounds.most()[axis] / 2 - bounds.least()[axis] / 2;
  }
  const double wide = width_ * (1 - 2 * kMargin) / 2;
  const double high = height_ * (1 - 2 * kMargin) / 2;
  scale_ = std::numeric_limits<double>::max();
  if (range[right_] > 0) scale_ = std::min(scale_, wide / range[right_]);
  if (range[up_] > 0) scale_ = std::min(scale_, high / range[up_]);
  if (range[right_] == 0 && range[up_] == 0) scale_ = 1;
  least_ = bounds.least()[2];
  height01_ = range[2] > 0 ? 0.5 / range[2] : 0;
  // As if the points lay evenly in the frame.
  const double room =
      4 * std::min(wide, scale_ * range[right_] + 1) * std::min(high, scale_ * range[up_] + 1);
  const double each = std::sqrt(room / static_cast<double>(bounds.points()));
  dot_ = static_cast<int>(std::clamp(std::ceil(each * kOverlap), 1.0, double{kLargestDot}));
}

void PointPicture::put(int x, int y, float depth, uint32_t color) {
  for (int row = std::max(y, 0); row < std::min(y + dot_, height_); ++row) {
    for (int column = std::max(x, 0); column < std::min(x + dot_, width_); ++column) {
      const size_t at =
          static_cast<size_t>(row) * static_cast<size_t>(width_) + static_cast<size_t>(column);
      if (depth < depths_[at]) continue;
      depths_[at] = depth;
      for (size_t i = 0; i < 3; ++i) pixels_[3 * at + i] = static_cast<uint8_t>(color >> (8 * i));
    }
  }
}

void PointPicture::drawBlock(const double* xyz, int64_t size, const uint32_t* colors) {
  for (int64_t i = 0; i < size; ++i) {
    const double* const p = xyz + 3 * i;
    const double x = (p[right_] - middle_[right_]) * scale_ + width_ / 2.0;
    const double y = height_ / 2.0 - (p[up_] - middle_[up_]) * scale_;
    if (!(x >= 0 && x < width_ && y >= 0 && y < height_)) continue;
    const auto depth = static_cast<float>((p[depth_] - middle_[depth_]) * toward_);
    const uint32_t color =
        colors != nullptr ? colors[i] : colorOfHeight((p[2] - least_) * height01_);
    put(static_cast<int>(x) - (dot_ - 1) / 2, static_cast<int>(y) - (dot_ - 1) / 2, depth, color);
  }
}

bool PointPicture::draw(PointSet& set, bool byColor, PointWork& work) {
  const bool colored = byColor && set.hasColors();
  std::vector<uint32_t> colors(colored ? kPictureBlock : 0);
  for (int64_t first = 0, size = 0; first < set.count(); first += size) {
    const double* const xyz = set.run(first, size);
    size = std::min(size, kPictureBlock);
    if (colored) set.getColors(first, size, colors.data());
    drawBlock(xyz, size, colored ? colors.data() : nullptr);
    if (!work.step(first + size, set.count())) return false;
  }
  return true;
}
