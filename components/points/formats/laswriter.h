// LasWriter: writes LAS files of version 1.2, point format 0, or 2 where there are colours.
//
// Coordinates become whole numbers of 32 bits on a grid: the one that the clouds came with,
// else the coarsest decimal one that keeps every coordinate as it is, else the finest that fits;
// then a note tells by how much they were rounded.
#pragma once

#include "components/points/formats/lasgrid.h"
#include "components/points/formats/lasheader.h"
#include "components/points/formats/pointformatwriter.h"

class LasWriter : public PointFormatWriter {
 public:
  explicit LasWriter(const PointWriteOptions&) {}

  bool write(PointSource& source, PointOutputBuffer& out) override;

 private:
  struct Bounds {
    double least[3];
    double most[3];
  };

  bool findBounds(PointSource& source, Bounds& bounds);
  bool chooseAxis(PointSource& source, int axis, const Bounds& bounds, PointGrid& grid);
  static bool chooseCoarse(int axis, const Bounds& bounds, PointGrid& grid);
  static bool fits(const LasGrid& grid, double least, double most);
  bool keepsAll(PointSource& source, int axis, const LasGrid& grid);
  bool writePoints(PointSource& source, PointOutputBuffer& out, const LasHeader& header);
};
