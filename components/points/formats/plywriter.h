// PlyWriter: writes PLY files with x, y and z, and red, green and blue where there are colours.
//
// The binary forms have coordinates of 4 or 8 bytes, the ASCII form text that reads back exactly.
#pragma once

#include "components/points/formats/pointformatwriter.h"

class PlyWriter : public PointFormatWriter {
 public:
  explicit PlyWriter(const PointWriteOptions& options) : options_(options) {}

  bool write(PointSource& source, PointOutputBuffer& out) override;

 private:
  void putHeader(PointOutputBuffer& out, const Totals& totals, int realBytes) const;
  bool writeBinary(PointSource& source, PointOutputBuffer& out, bool colors, int realBytes);
  bool writeText(PointSource& source, PointOutputBuffer& out, bool colors);

  PointWriteOptions options_;
};
