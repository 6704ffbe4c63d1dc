// PointFormatReader: reads the point files of one format into a sink.
//
//   auto reader = format.makeReader();
//   if (!reader->read(bytes, sink)) report(reader->problem());
//   for (const PointNote& note : reader->notes()) warn(note);
//
// A reader serves one file. One thread.
#pragma once

#include <string_view>

#include "components/points/formats/pointinputbuffer.h"
#include "components/points/formats/pointnotes.h"
#include "components/points/formats/pointrecordlayout.h"
#include "components/points/formats/pointsink.h"

class PointFormatReader {
 public:
  virtual ~PointFormatReader() = default;

  // False when the file is not whole or the sink had enough: problem() has no key then.
  virtual bool read(PointInputBuffer& bytes, PointSink& sink) = 0;

  const PointProblem& problem() const { return problem_; }
  const PointNotes& notes() const { return notes_; }

 protected:
  // Each gives false, for the caller to give on.
  bool failAtByte(int64_t byte, const char* key, std::string_view argument = {});
  bool failAtLine(int64_t line, const char* key, std::string_view argument = {});
  void note(const char* key, std::string_view first = {}, std::string_view second = {});
  // Whether `count` points of at least `smallest` bytes each may follow, of which the last may lack
  // `missing`; else it has failed. An input without a size fits any.
  bool countFits(const PointInputBuffer& bytes, int64_t count, int64_t smallest,
                 int64_t missing = 0);
  // For a file that ends where more is expected.
  bool failCut(const PointInputBuffer& bytes);
  // Of so many points the attributes of these names; nothing is said where there are none.
  void noteAttributesNotKept(int64_t points, std::string_view names);
  void noteColorsRounded();
  // For a file that is to end here: counts what is left.
  void noteBehind(PointInputBuffer& bytes);

  // Gives the sink `count` points of records of one size.
  bool readRecords(PointInputBuffer& bytes, PointSink& sink, const PointRecordLayout& layout,
                   int64_t count);
  // The next line that is not blank. Has failed where there is none.
  bool nextLine(PointInputBuffer& bytes, std::string_view& line);

  int64_t line_ = 0;          // of a text, the one that was read last
  size_t colorsRounded_ = 0;  // channels

 private:
  bool takeCoordinates(const PointInputBuffer& bytes, const PointRecordLayout& layout, double* xyz,
                       size_t count);

  PointProblem problem_;
  PointNotes notes_;
};
