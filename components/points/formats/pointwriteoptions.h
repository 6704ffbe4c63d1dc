// PointWriteOptions: in which form points are to be written, where a format has several.
//
// A plain value; its start values are the defaults of the settings.
#pragma once

#include "components/points/formats/plyheader.h"

struct PointWriteOptions {
  static constexpr int kAsRead = -1;

  PlyForm plyForm = PlyForm::littleEndian;
  bool pcdBinary = true;
  // Bytes of a coordinate in PLY and PCD: 4, 8, or 0 for 4 where that loses nothing and else 8.
  int realBytes = 0;
  // Digits behind the point in text, 0 to 15, or as many as the clouds were read with.
  int decimals = kAsRead;
};
