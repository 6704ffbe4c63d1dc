// PlyReader: reads PLY files, in ASCII and both binary forms, with properties of any type in any
// order.
//
// The element "vertex" becomes one cloud: x, y and z, and red, green and blue as colours where all
// three have a type for it. Everything else is passed over and named in a note.
#pragma once

#include "components/points/formats/plyheader.h"
#include "components/points/formats/pointformatreader.h"

class PlyReader : public PointFormatReader {
 public:
  // Whether a file begins as one of this format.
  static bool recognises(std::string_view head);

  bool read(PointInputBuffer& bytes, PointSink& sink) override;

 private:
  // Where the wanted properties stand, as indices of the element; -1 for none.
  struct Wanted {
    int xyz[3] = {-1, -1, -1};
    int rgb[3] = {-1, -1, -1};
    bool hasColors() const { return rgb[0] >= 0; }
  };
  struct Record;

  bool choose(const PlyElement& vertex);
  bool readElement(const PlyElement& element);
  bool readPoints(const PlyElement& vertex);
  bool readColumns(const PlyElement& vertex);
  bool readUneven(const PlyElement& vertex);
  bool readLines(const PlyElement& vertex);
  bool takeRecord(const PlyElement& vertex, Record& record);
  bool takeLine(const PlyElement& vertex, std::string_view line, Record& record);
  bool takeWord(const PlyElement& vertex, size_t property, std::string_view word, Record& record);
  bool takeColorWord(PointScalar type, std::string_view word, uint8_t& channel);
  bool skipElement(const PlyElement& element);
  bool skipProperty(const PlyProperty& property);
  bool give(const double* xyz, const PointColor* colors, size_t count);
  void noteLosses();

  bool swapped() const { return header_.form() == PlyForm::bigEndian; }

  PlyHeader header_;
  Wanted wanted_;
  PointInputBuffer* bytes_ = nullptr;  // during read()
  PointSink* sink_ = nullptr;          // during read()
};
