// CwlReader: reads native document files, with the names, colours, selections and scales of their
// clouds.
//
// What the elements are is told in cwltags.h. Elements of other kinds are passed over and counted
// in a note.
#pragma once

#include <vector>

#include "components/points/formats/pointformatreader.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oroguid.h"

class CwlReader : public PointFormatReader {
 public:
  // Whether a file begins as one of this format, or as another model file.
  static bool recognises(std::string_view head);

  bool read(PointInputBuffer& bytes, PointSink& sink) override;

 private:
  struct Element {
    uint32_t tag = 0;
    uint32_t version = 0;
    int64_t start = 0;  // in the file
    int64_t body = 0;
    int64_t end = 0;
    int64_t size() const { return end - body; }
  };
  // What has been read of an object before its points.
  struct Cloud {
    PointCloudHead head;
    std::vector<PointColor> colors;  // of places from 0, the first of which is no point
    bool hasPoints = false;
    bool hasSelection = false;
  };

  bool readRoot(Element& root);
  bool begin(int64_t limit, Element& element);
  bool end(const Element& element);
  bool readDocument(const Element& root);
  bool readObject(const Element& object);
  bool readPart(const Element& part, Cloud& cloud);
  bool readName(const Element& part, Cloud& cloud);
  bool readNumbers(const Element& part, double* numbers, size_t count);
  bool readGrid(const Element& part, Cloud& cloud);
  bool readColors(const Element& part, Cloud& cloud);
  bool readPoints(const Element& part, Cloud& cloud);
  bool readSelection(const Element& part, Cloud& cloud);
  bool readWords(BitVector& selection, uint32_t words, int64_t points);
  bool readIndices(BitVector& selection, uint32_t indices, int64_t points);
  bool select(BitVector& selection, int64_t point, int64_t points);
  bool takeWord(uint32_t& word);
  bool takeId(GUID& id);

  PointInputBuffer* bytes_ = nullptr;  // during read()
  PointSink* sink_ = nullptr;          // during read()
  size_t sizeWidth_ = 8;               // bytes of an element's size
  int64_t announced_ = -1;             // clouds
  int64_t clouds_ = 0;
  int64_t passedOver_ = 0;  // elements
};
