#include "components/points/formats/pointscalar.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "numbers are taken as they stand");

namespace {

template <size_t Size>
struct Bits;
template <>
struct Bits<1> {
  using Type = uint8_t;
  static Type swapped(Type value) { return value; }
};
template <>
struct Bits<2> {
  using Type = uint16_t;
  static Type swapped(Type value) { return __builtin_bswap16(value); }
};
template <>
struct Bits<4> {
  using Type = uint32_t;
  static Type swapped(Type value) { return __builtin_bswap32(value); }
};
template <>
struct Bits<8> {
  using Type = uint64_t;
  static Type swapped(Type value) { return __builtin_bswap64(value); }
};

template <class T, bool Swapped>
T load(const char* from) {
  typename Bits<sizeof(T)>::Type bits;
  std::memcpy(&bits, from, sizeof bits);
  if (Swapped) bits = Bits<sizeof(T)>::swapped(bits);
  return std::bit_cast<T>(bits);
}

template <class T, bool Swapped>
void readColumn(const char* from, size_t stride, size_t count, double* to, size_t step) {
  for (size_t i = 0; i < count; ++i, from += stride, to += step) *to = load<T, Swapped>(from);
}

size_t readBytes(const char* from, size_t stride, size_t count, uint8_t* to, size_t step) {
  for (size_t i = 0; i < count; ++i, from += stride, to += step) *to = static_cast<uint8_t>(*from);
  return 0;
}

// Both ways to widen a channel to 16 bits, by zeros and by itself, lose nothing.
template <bool Swapped>
size_t readWords(const char* from, size_t stride, size_t count, uint8_t* to, size_t step) {
  size_t rounded = 0;
  for (size_t i = 0; i < count; ++i, from += stride, to += step) {
    const uint16_t value = load<uint16_t, Swapped>(from);
    const auto low = static_cast<uint8_t>(value);
    *to = static_cast<uint8_t>(value >> 8);
    rounded += low != 0 && low != *to;
  }
  return rounded;
}

template <class T, bool Swapped>
size_t readShares(const char* from, size_t stride, size_t count, uint8_t* to, size_t step) {
  size_t rounded = 0;
  for (size_t i = 0; i < count; ++i, from += stride, to += step) {
    const T share = load<T, Swapped>(from);
    const T bounded = share > 0 ? std::min(share, T{1}) : T{0};  // what is no number is dark
    const T whole = std::nearbyint(bounded * 255);
    *to = static_cast<uint8_t>(whole);
    rounded += !(whole / 255 == share);
  }
  return rounded;
}

template <bool Swapped>
PointColumn columnOf(PointScalar type) {
  constexpr PointColumn kColumns[] = {
      readColumn<int8_t, Swapped>,   readColumn<uint8_t, Swapped>, readColumn<int16_t, Swapped>,
      readColumn<uint16_t, Swapped>, readColumn<int32_t, Swapped>, readColumn<uint32_t, Swapped>,
      readColumn<float, Swapped>,    readColumn<double, Swapped>,
  };
  return kColumns[static_cast<size_t>(type)];
}

template <bool Swapped>
PointColorColumn colorColumnOf(PointScalar type) {
  switch (type) {
    case PointScalar::uint8:
      return readBytes;
    case PointScalar::uint16:
      return readWords<Swapped>;
    case PointScalar::float32:
      return readShares<float, Swapped>;
    case PointScalar::float64:
      return readShares<double, Swapped>;
    default:
      return nullptr;
  }
}

}  // namespace

PointColumn pointColumn(PointScalar type, bool swapped) {
  return swapped ? columnOf<true>(type) : columnOf<false>(type);
}

PointColorColumn pointColorColumn(PointScalar type, bool swapped) {
  return swapped ? colorColumnOf<true>(type) : colorColumnOf<false>(type);
}

size_t pointFirstNotFinite(const double* values, size_t count) {
  constexpr uint64_t kExponent = 0x7FF0000000000000;
  constexpr size_t kBlock = 64;
  for (size_t first = 0; first < count; first += kBlock) {
    const size_t last = std::min(first + kBlock, count);
    uint64_t bad = 0;
    for (size_t i = first; i < last; ++i) {
      const auto bits = std::bit_cast<uint64_t>(values[i]);
      bad |= (bits & kExponent) + (kExponent & -kExponent);  // carries into the sign when all ones
    }
    if ((bad >> 63) == 0) continue;
    return static_cast<size_t>(
        std::find_if(values + first, values + last, [](double v) { return !std::isfinite(v); }) -
        values);
  }
  return count;
}
