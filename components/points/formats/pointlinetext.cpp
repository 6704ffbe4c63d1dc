#include "components/points/formats/pointlinetext.h"

namespace {

constexpr size_t kLineRoom = 4 * PointNumberText::kRoom;

}  // namespace

void PointLineText::put(PointOutputBuffer& out, const double* xyz, const PointColor* colors,
                        size_t count) const {
  for (size_t i = 0; i < count; ++i, xyz += 3) {
    char* at = number_.put(out.room(kLineRoom), xyz[0]);
    *at++ = separator_;
    at = number_.put(at, xyz[1]);
    *at++ = separator_;
    at = number_.put(at, xyz[2]);
    if (colors != nullptr) at = putColor(at, colors[i]);
    *at++ = '\n';
    out.take(at);
  }
}

char* PointLineText::putColor(char* at, const PointColor& color) const {
  if (form_ == Colors::packed) {
    *at++ = separator_;
    return PointNumberText::putWhole(
        at, uint32_t{color.red} << 16 | uint32_t{color.green} << 8 | uint32_t{color.blue});
  }
  for (const uint8_t channel : {color.red, color.green, color.blue}) {
    *at++ = separator_;
    at = PointNumberText::putWhole(at, channel);
  }
  return at;
}
