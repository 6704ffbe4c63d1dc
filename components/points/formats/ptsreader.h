// PtsReader: reads PTS files, the text of scanners.
//
// A line with the number of points stands before the points of each scan, which becomes a cloud of
// its own. A point is x y z, with an intensity, a colour, or both behind it: 3, 4, 6 or 7 numbers,
// as many on every line of a scan. Intensities are not kept. Without a count the file is one scan.
#pragma once

#include "components/points/formats/pointtextreader.h"

class PtsReader : public PointTextReader {
 protected:
  bool takeLine(PointTextLine& line, PointInputBuffer& bytes) override;
  bool finish() override;

 private:
  bool takeCount(const PointTextLine& line, int64_t& count) const;
  bool takeColumns(PointTextLine& line);

  int columns_ = 0;  // of the scan's first line
  int64_t intensities_ = 0;
};
