// LasHeader: the head of a LAS file, as far as points are concerned, and the form of its bytes.
//
// Versions 1.0 to 1.4 are read, 1.2 is written. A plain value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "components/points/formats/pointcloudhead.h"

struct LasHeader {
  static constexpr size_t kSmallest = 227;  // bytes of the versions up to 1.2
  static constexpr size_t kOf14 = 375;

  int minorVersion = 2;
  int headerSize = kSmallest;        // bytes
  uint32_t pointOffset = kSmallest;  // where the first point stands
  uint32_t furtherRecords = 0;       // between header and points
  uint64_t lateRecords = 0;          // behind the points
  int pointFormat = 0;
  int recordSize = 0;  // bytes of a point
  uint64_t count = 0;
  PointGrid grid;
  double minimum[3] = {0, 0, 0};
  double maximum[3] = {0, 0, 0};

  // Takes the fields from the file's first bytes. Null, or what is wrong as a key with its argument
  // and the byte. Requires: kSmallest bytes, or kOf14 where needs14() says so.
  const char* take(const char* bytes, std::string& argument, int64_t& place);
  static bool needs14(const char* bytes);
  // The header of a file of version 1.2; its count fits 32 bits.
  std::string bytes12() const;

  // Of a point format from 0 to 8: bytes of a point, and where its colours stand in it or -1.
  static int smallestRecord(int pointFormat);
  static int colorOffset(int pointFormat);
};
