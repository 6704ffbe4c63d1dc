// LasReader: reads LAS files of the versions 1.0 to 1.4 with the point formats 0 to 8,
// uncompressed.
//
// Coordinates, the grid that they lie on, and colours are kept. Colours have 16 bits a channel, of
// which the upper 8 are taken; a file whose channels all stay below 256 is one of 8 bits. Of
// everything else a note tells what the file really has.
#pragma once

#include "components/points/formats/lasgrid.h"
#include "components/points/formats/lasheader.h"
#include "components/points/formats/pointformatreader.h"

class LasReader : public PointFormatReader {
 public:
  // Whether a file begins as one of this format.
  static bool recognises(std::string_view head);

  bool read(PointInputBuffer& bytes, PointSink& sink) override;

 private:
  // What all points have in common, bit by bit: `any` of them set, `all` of them set.
  struct Bits {
    std::string any;
    std::string all;
  };

  bool readHeader(PointInputBuffer& bytes);
  bool findColorForm(PointInputBuffer& bytes);
  bool readPoints(PointInputBuffer& bytes, PointSink& sink);
  bool takeCoordinates(const PointInputBuffer& bytes, const LasGrid* grids, double* xyz,
                       size_t count);
  void takeColors(const char* records, PointColor* colors, size_t count);
  void takeBits(const char* records, size_t count);
  void noteLosses(PointInputBuffer& bytes);
  std::string lostAttributes() const;

  LasHeader header_;
  bool colors16_ = true;  // false: the channels hold 0 to 255
  Bits bits_;             // of the whole record
};
