// PointScalar: the number types of binary point files, and columns of them turned into coordinates
// and colours.
//
//   const PointColumn read = pointColumn(PointScalar::float32, false);
//   read(record + 4, stride, count, xyz + 1, 3);
//
// A column is one number of each record: `count` of them, `stride` bytes apart. All functions are
// safe on any thread.
#pragma once

#include <cstddef>
#include <cstdint>

enum class PointScalar : uint8_t {
  int8,
  uint8,
  int16,
  uint16,
  int32,
  uint32,
  float32,
  float64,
};

constexpr size_t pointScalarSize(PointScalar type) {
  constexpr size_t kSizes[] = {1, 1, 2, 2, 4, 4, 4, 8};
  return kSizes[static_cast<size_t>(type)];
}

// Writes the numbers to `to`, `step` doubles apart; every type fits a double exactly.
using PointColumn = void (*)(const char* from, size_t stride, size_t count, double* to,
                             size_t step);
// `swapped`: the most significant byte comes first.
PointColumn pointColumn(PointScalar type, bool swapped);

// Writes colour channels to `to`, `step` bytes apart, and gives how many of them were rounded.
// uint8 is the channel itself, of uint16 the upper byte is, float32 and float64 reach from 0 to 1.
using PointColorColumn = size_t (*)(const char* from, size_t stride, size_t count, uint8_t* to,
                                    size_t step);
// Null for the types that no channel has.
PointColorColumn pointColorColumn(PointScalar type, bool swapped);

// The first of `count` doubles that is no finite number, or `count`.
size_t pointFirstNotFinite(const double* values, size_t count);
