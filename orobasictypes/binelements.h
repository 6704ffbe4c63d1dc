// The external form of numbers, for BinInput and BinOutput alone: the most significant byte first,
// integers of 1 to 8 bytes, floats of 4 or 8.
//
// Integers narrower than their type are filled up with their sign or with zeros, wider ones lose
// their high bytes. Floats keep their bits unless the width asks for the other type. Plain
// functions on the caller's memory; any thread.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

// The types that binary files are made of.
template <class T>
concept BinValue =
    std::same_as<T, int8_t> || std::same_as<T, uint8_t> || std::same_as<T, int16_t> ||
    std::same_as<T, uint16_t> || std::same_as<T, int32_t> || std::same_as<T, uint32_t> ||
    std::same_as<T, uint64_t> || std::same_as<T, float> || std::same_as<T, double>;

namespace binelements {

static_assert(std::endian::native == std::endian::little);

template <size_t size>
inline void reverseOne(uint8_t* to, const uint8_t* from) {
  using Word =
      std::conditional_t<size == 2, uint16_t, std::conditional_t<size == 4, uint32_t, uint64_t>>;
  Word word;
  std::memcpy(&word, from, size);
  if constexpr (size == 2) word = __builtin_bswap16(word);
  if constexpr (size == 4) word = __builtin_bswap32(word);
  if constexpr (size == 8) word = __builtin_bswap64(word);
  std::memcpy(to, &word, size);
}

// Any multiple of `size`, as many bytes at once as the processor can.
template <size_t size>
void copyReversedBlock(uint8_t* to, const uint8_t* from, size_t bytes);

// Copies `bytes`, a multiple of `size`, between the external form and memory, either way.
template <size_t size>
inline void copyReversed(void* destination, const void* source, size_t bytes) {
  auto* to = static_cast<uint8_t*>(destination);
  const auto* from = static_cast<const uint8_t*>(source);
  if constexpr (size == 1) {
    std::memcpy(to, from, bytes);
    return;
  }
  constexpr size_t shortest = 64;  // for less a call is not worth it
  if (bytes >= shortest) return copyReversedBlock<size>(to, from, bytes);
#pragma GCC unroll 8
  for (size_t at = 0; at < bytes; at += size) reverseOne<size>(to + at, from + at);
}

// Whether elements of the type may have that width in a medium.
template <BinValue T>
constexpr bool hasWidth(int width) {
  if constexpr (std::is_floating_point_v<T>) return width == 4 || width == 8;
  return width >= 1 && width <= 8;
}

// `count` elements of `width` bytes each. Requires: hasWidth<T>(width).
template <BinValue T>
void decode(T* to, const uint8_t* from, int64_t count, int width);
template <BinValue T>
void encode(uint8_t* to, const T* from, int64_t count, int width);

}  // namespace binelements
