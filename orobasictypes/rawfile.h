// Single values on C streams: oroRead and oroWrite with the least significant byte first, the
// Swapped ones with the most significant byte first.
//
//   uint16_t size = 0;
//   if (!oroRead(file, &size)) return false;
//   oroWriteSized(file, &length, 3);  // the low three bytes
//
// For the binary settings file and for readers of foreign formats; the system's own formats are
// written with BinOutput. Values are integers and floats of 2, 4 or 8 bytes. Each operation is
// false when the stream failed or ended. The stream is the caller's; one thread at a time.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <type_traits>

namespace rawfile {

static_assert(std::endian::native == std::endian::little);

template <class T>
concept Value = std::is_arithmetic_v<T> &&(sizeof(T) == 2 || sizeof(T) == 4 || sizeof(T) == 8);

// `count` elements of `size` bytes. They stop at the first that fails, which stays as it was; those
// before it are done.
bool readElements(std::FILE* stream, void* to, int64_t count, int size, bool swapped);
bool writeElements(std::FILE* stream, const void* from, int64_t count, int size, bool swapped);
// The low `width` bytes of one value.
bool writeLow(std::FILE* stream, uint64_t value, int width, bool swapped);

// Wider than its type, a signed value is filled up with its sign.
template <class T>
bool writeSized(std::FILE* stream, const T* from, int64_t count, int width, bool swapped) {
  static_assert(std::is_integral_v<T>);
  if (width < 1 || width > 8) return false;
  for (int64_t i = 0; i < count; ++i) {
    if (!writeLow(stream, static_cast<uint64_t>(from[i]), width, swapped)) return false;
  }
  return true;
}

}  // namespace rawfile

// Reading. Array forms stop at the first value that fails; it keeps all its bytes. A count below 1
// is true and touches nothing.
template <rawfile::Value T>
bool oroRead(std::FILE* stream, T* values, int64_t count = 1) {
  return rawfile::readElements(stream, values, count, sizeof(T), false);
}
template <rawfile::Value T>
bool oroReadSwapped(std::FILE* stream, T* values, int64_t count = 1) {
  return rawfile::readElements(stream, values, count, sizeof(T), true);
}

// Writing values as wide as their type. Array forms stop at the first that fails.
template <rawfile::Value T>
bool oroWrite(std::FILE* stream, const T* values, int64_t count = 1) {
  return rawfile::writeElements(stream, values, count, sizeof(T), false);
}
template <rawfile::Value T>
bool oroWriteSwapped(std::FILE* stream, const T* values, int64_t count = 1) {
  return rawfile::writeElements(stream, values, count, sizeof(T), true);
}

// Writing the low `width` bytes, 1 to 8, of each integer; false for any other width.
template <class T>
bool oroWriteSized(std::FILE* stream, const T* value, int width) {
  return rawfile::writeSized(stream, value, 1, width, false);
}
template <class T>
bool oroWriteSized(std::FILE* stream, const T* values, int64_t count, int width) {
  return rawfile::writeSized(stream, values, count, width, false);
}
template <class T>
bool oroWriteSizedSwapped(std::FILE* stream, const T* value, int width) {
  return rawfile::writeSized(stream, value, 1, width, true);
}
template <class T>
bool oroWriteSizedSwapped(std::FILE* stream, const T* values, int64_t count, int width) {
  return rawfile::writeSized(stream, values, count, width, true);
}
