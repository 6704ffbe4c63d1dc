#include "components/points/commands/pointgray.h"

#include <algorithm>
#include <vector>

#include "components/points/commands/pointset.h"

uint32_t PointGray::grayOf(uint32_t color) {
  const uint32_t red = color & 0xFF;
  const uint32_t green = color >> 8 & 0xFF;
  const uint32_t blue = color >> 16 & 0xFF;
  const uint32_t gray = (red * 30 + green * 59 + blue * 11 + 50) / 100;
  return (color & 0xFF000000) | gray << 16 | gray << 8 | gray;
}

bool PointGray::apply(PointSet& set) {
  constexpr int64_t kBlock = 4096;
  if (!set.hasColors()) return false;
  std::vector<uint32_t> block(kBlock);
  for (int64_t first = 0; first < set.count(); first += kBlock) {
    const int64_t size = std::min(kBlock, set.count() - first);
    set.getColors(first, size, block.data());
    std::transform(block.begin(), block.begin() + size, block.begin(), grayOf);
    set.setColors(first, size, block.data());
  }
  return true;
}
