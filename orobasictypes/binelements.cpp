#include "orobasictypes/binelements.h"

#include <immintrin.h>

#include <cmath>
#include <limits>

#include "orobasictypes/kelprocessor.h"

namespace {

using binelements::copyReversed;
using binelements::reverseOne;

template <size_t size>
void copyOneByOne(uint8_t* to, const uint8_t* from, size_t bytes) {
  for (; bytes > 0; bytes -= size, to += size, from += size) reverseOne<size>(to, from);
}

// For each byte of a group of sixteen, where it comes from.
template <size_t size>
struct Order {
  constexpr Order() {
    for (size_t i = 0; i < 32; ++i) places[i] = static_cast<uint8_t>((i ^ (size - 1)) & 15);
  }
  alignas(32) uint8_t places[32] = {};
};

template <size_t size>
__attribute__((target("avx2"))) void copyWide(uint8_t* to, const uint8_t* from, size_t bytes) {
  static constexpr Order<size> order;
  const __m256i places = _mm256_load_si256(reinterpret_cast<const __m256i*>(order.places));
  for (; bytes >= 32; bytes -= 32, to += 32, from += 32) {
    const __m256i word = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm256_shuffle_epi8(word, places));
  }
  copyOneByOne<size>(to, from, bytes);
}

// Doubles that no float can hold become infinite; the language leaves that conversion open.
float narrowed(double value) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  if (std::abs(value) <= std::numeric_limits<float>::max() || value != value) {
    return static_cast<float>(value);
  }
  return value > 0 ? infinity : -infinity;
}

template <class T>
T integerFrom(const uint8_t* from, int width) {
  uint64_t value = std::is_signed_v<T> && (from[0] & 0x80) != 0 ? ~uint64_t{0} : 0;
  for (int i = 0; i < width; ++i) value = value << 8 | from[i];
  return static_cast<T>(value);
}

template <class T>
void integerTo(uint8_t* to, T value, int width) {
  auto rest = static_cast<uint64_t>(
      static_cast<std::conditional_t<std::is_signed_v<T>, int64_t, uint64_t>>(value));
  for (int i = width - 1; i >= 0; --i, rest >>= 8) to[i] = static_cast<uint8_t>(rest);
}

// The other of the two floating types, in the external form.
template <class T>
using Other = std::conditional_t<sizeof(T) == 4, double, float>;

template <class T>
Other<T> converted(T value) {
  if constexpr (sizeof(T) == 4)
    return static_cast<double>(value);
  else
    return narrowed(value);
}

template <class T>
T floatFrom(const uint8_t* from) {
  Other<T> value;
  copyReversed<sizeof value>(&value, from, sizeof value);
  return converted(value);
}

template <class T>
void floatTo(uint8_t* to, T value) {
  const Other<T> other = converted(value);
  copyReversed<sizeof other>(to, &other, sizeof other);
}

}  // namespace

template <size_t size>
void binelements::copyReversedBlock(uint8_t* to, const uint8_t* from, size_t bytes) {
  if (kelProcessorLevel >= kKelAvx2) {
    copyWide<size>(to, from, bytes);
  } else {
    copyOneByOne<size>(to, from, bytes);
  }
}

template <BinValue T>
void binelements::decode(T* to, const uint8_t* from, int64_t count, int width) {
  if (width == sizeof(T)) {
    copyReversed<sizeof(T)>(to, from, static_cast<size_t>(count) * sizeof(T));
    return;
  }
  for (int64_t i = 0; i < count; ++i, from += width) {
    if constexpr (std::is_floating_point_v<T>)
      to[i] = floatFrom<T>(from);
    else
      to[i] = integerFrom<T>(from, width);
  }
}

template <BinValue T>
void binelements::encode(uint8_t* to, const T* from, int64_t count, int width) {
  if (width == sizeof(T)) {
    copyReversed<sizeof(T)>(to, from, static_cast<size_t>(count) * sizeof(T));
    return;
  }
  for (int64_t i = 0; i < count; ++i, to += width) {
    if constexpr (std::is_floating_point_v<T>)
      floatTo<T>(to, from[i]);
    else
      integerTo<T>(to, from[i], width);
  }
}

namespace binelements {
template void copyReversedBlock<2>(uint8_t*, const uint8_t*, size_t);
template void copyReversedBlock<4>(uint8_t*, const uint8_t*, size_t);
template void copyReversedBlock<8>(uint8_t*, const uint8_t*, size_t);
template void decode(int8_t*, const uint8_t*, int64_t, int);
template void decode(uint8_t*, const uint8_t*, int64_t, int);
template void decode(int16_t*, const uint8_t*, int64_t, int);
template void decode(uint16_t*, const uint8_t*, int64_t, int);
template void decode(int32_t*, const uint8_t*, int64_t, int);
template void decode(uint32_t*, const uint8_t*, int64_t, int);
template void decode(uint64_t*, const uint8_t*, int64_t, int);
template void decode(float*, const uint8_t*, int64_t, int);
template void decode(double*, const uint8_t*, int64_t, int);
template void encode(uint8_t*, const int8_t*, int64_t, int);
template void encode(uint8_t*, const uint8_t*, int64_t, int);
template void encode(uint8_t*, const int16_t*, int64_t, int);
template void encode(uint8_t*, const uint16_t*, int64_t, int);
template void encode(uint8_t*, const int32_t*, int64_t, int);
template void encode(uint8_t*, const uint32_t*, int64_t, int);
template void encode(uint8_t*, const uint64_t*, int64_t, int);
template void encode(uint8_t*, const float*, int64_t, int);
template void encode(uint8_t*, const double*, int64_t, int);
}  // namespace binelements
