// PointRecordLayout: where coordinates and colours stand in binary records of one size.
//
// A plain value.
#pragma once

#include "components/points/formats/pointscalar.h"

struct PointRecordLayout {
  struct Column {
    size_t offset = 0;
    PointScalar type = PointScalar::uint8;
  };

  size_t stride = 0;     // bytes of a record, 1 to PointInputBuffer::kRoom
  bool swapped = false;  // the most significant byte comes first
  Column xyz[3];
  bool hasColors = false;
  Column rgb[3];  // of types that pointColorColumn knows
};
