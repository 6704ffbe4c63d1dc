// PointColor: the colour of a point, 0 to 255 a channel, and its packed form.
//
// Three bytes in a row in every block of colours. A plain value.
#pragma once

#include <cstdint>

struct PointColor {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;

  // As IOroPointExtraInfo packs colours: red in the lowest byte, then green, blue, and 255.
  constexpr uint32_t packed() const {
    return red | uint32_t{green} << 8 | uint32_t{blue} << 16 | 0xFF000000;
  }
  static constexpr PointColor unpacked(uint32_t packed) {
    return {static_cast<uint8_t>(packed), static_cast<uint8_t>(packed >> 8),
            static_cast<uint8_t>(packed >> 16)};
  }

  friend bool operator==(const PointColor&, const PointColor&) = default;
};
