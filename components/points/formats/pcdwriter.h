// PcdWriter: writes PCD files of version 0.7 with x, y and z, and rgb where there are colours.
//
// The binary form has coordinates of 4 or 8 bytes, the ASCII form text that reads back exactly.
#pragma once

#include "components/points/formats/pointformatwriter.h"

class PcdWriter : public PointFormatWriter {
 public:
  explicit PcdWriter(const PointWriteOptions& options) : options_(options) {}

  bool write(PointSource& source, PointOutputBuffer& out) override;

 private:
  void putHeader(PointOutputBuffer& out, const Totals& totals, int realBytes) const;

  PointWriteOptions options_;
};
