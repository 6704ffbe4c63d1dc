// CsvReader: reads points from a table of comma-separated text.
//
// Where the first line begins with a letter or a quote it names the columns: x, y, z, and red,
// green and blue or r, g and b, in any order and letter case; others are passed over. They stand
// apart by the comma, semicolon or tab that comes first in that line. A table without such a line
// is one of x y z or x y z r g b.
#pragma once

#include <string>

#include "components/points/formats/pointtextreader.h"

class CsvReader : public PointTextReader {
 protected:
  bool takeLine(PointTextLine& line, PointInputBuffer& bytes) override;
  bool finish() override;

 private:
  bool takeNames(std::string_view line);
  void addNotKept(std::string_view name);
  bool takeRow(std::string_view line);
  bool takeField(std::string_view field, int column, double* xyz, PointColor& color);
  std::string_view nextField(std::string_view& rest, bool& more) const;

  bool first_ = true;   // no line has been seen
  char separator_ = 0;  // 0 where no line names the columns
  int columns_ = 0;     // that are named
  int xyz_[3] = {-1, -1, -1};
  int rgb_[3] = {-1, -1, -1};
  std::string notKept_;  // names of further columns
};
