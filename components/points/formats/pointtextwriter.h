// PointTextWriter: writes points as lines of text, of one of the kinds that differ in their
// separator and in what stands in front.
//
// A line is x y z, or x y z r g b where there are colours. Coordinates read back exactly.
#pragma once

#include "components/points/formats/pointformatwriter.h"

enum class PointTextKind {
  plain,  // blanks between the numbers
  csv,    // commas, and a first line that names the columns
  pts,    // blanks, and a first line with the number of points
};

class PointTextWriter : public PointFormatWriter {
 public:
  PointTextWriter(PointTextKind kind, const PointWriteOptions& options)
      : kind_(kind), options_(options) {}

  bool write(PointSource& source, PointOutputBuffer& out) override;

 private:
  PointTextKind kind_;
  PointWriteOptions options_;
};
