// PcdReader: reads PCD files, in ASCII and binary form.
//
// The fields x, y and z, of any type up to 8 bytes but whole numbers of 8, and the colours packed
// in a field rgb or rgba. Everything else is passed over and named in a note.
#pragma once

#include "components/points/formats/pcdheader.h"
#include "components/points/formats/pointformatreader.h"

class PcdReader : public PointFormatReader {
 public:
  // Whether a file begins as one of this format.
  static bool recognises(std::string_view head);

  bool read(PointInputBuffer& bytes, PointSink& sink) override;

 private:
  bool choose();
  bool readBinary(PointInputBuffer& bytes, PointSink& sink);
  bool readText(PointInputBuffer& bytes, PointSink& sink);
  bool takeLine(std::string_view line, double* xyz, PointColor& color);
  bool takeColor(std::string_view word, PointColor& color);
  void noteLosses();

  PcdHeader header_;
  const PcdField* xyz_[3] = {};
  const PcdField* color_ = nullptr;  // null where there is none
};
