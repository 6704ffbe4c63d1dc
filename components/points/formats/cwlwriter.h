// CwlWriter: writes native document files, in which nothing of the clouds is lost.
//
// What the elements are is told in cwltags.h. Their sizes are known in advance, so that the file is
// written from front to end.
#pragma once

#include "components/points/formats/pointformatwriter.h"

class CwlWriter : public PointFormatWriter {
 public:
  explicit CwlWriter(const PointWriteOptions&) {}

  bool write(PointSource& source, PointOutputBuffer& out) override;

 private:
  bool writePoints(PointSource& source, PointOutputBuffer& out, size_t cloud);
  bool writeColors(PointSource& source, PointOutputBuffer& out, size_t cloud);
};
