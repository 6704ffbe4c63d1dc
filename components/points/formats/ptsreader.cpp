#include "components/points/formats/ptsreader.h"

#include <string>

#include "components/points/formats/pointtexts.h"

namespace {

constexpr int64_t kSmallestLine =
    6;  // bytes of a point, with its line end, which the last may lack

int columnsOf(PointTextLine line) {
  int columns = 1;
  while (!line.isOver()) {
    const char* const before = line.at();
    if (line.skipSeparator()) {
      columns += !line.isOver();
    } else {
      line.goTo(before + 1);
    }
  }
  return columns;
}

}  // namespace

bool PtsReader::takeLine(PointTextLine& line, PointInputBuffer& bytes) {
  int64_t count = 0;
  const bool isCount = takeCount(line, count);
  const bool isComplete = announced_ < 0 ? appended_ == 0 : appended_ == announced_;
  if (!isCount) {
    if (announced_ >= 0 && isComplete) return failHere(pointtexts::kMorePoints);
    return takeColumns(line);
  }
  if (!isComplete) return failHere(pointtexts::kThreeCoordinates);
  if (count < 0) return failHere(pointtexts::kBadCount);
  if (!countFits(bytes, count, kSmallestLine, 1) || !endCloud()) return false;
  announced_ = count;
  columns_ = 0;
  return true;
}

bool PtsReader::takeCount(const PointTextLine& line, int64_t& count) const {
  PointTextLine rest = line;
  if (!rest.takeWhole(count)) return false;
  rest.skipBlanks();
  return rest.isOver();
}

bool PtsReader::takeColumns(PointTextLine& line) {
  const int columns = columnsOf(line);
  if (columns_ == 0) columns_ = columns;
  if (columns != columns_) return failHere(pointtexts::kOtherWidth);
  if (columns != 4 && columns != 7) return takePoint(line);
  double xyz[3];
  double intensity = 0;
  for (int i = 0; i < 3; ++i) {
    if (!takeCoordinate(line, xyz[i])) return false;
    if (!line.skipSeparator()) return failHere(pointtexts::kBadCoordinate);
  }
  if (!line.takeReal(intensity)) {
    return failAtLine(line_, pointtexts::kNoNumber, line.rest());
  }
  ++intensities_;
  PointColor color;
  const bool apart = line.skipSeparator();
  if (columns == 4)
    return line.isOver() ? append(xyz, nullptr) : failHere(pointtexts::kMoreNumbers);
  if (!apart) return failHere(pointtexts::kBadColor);
  return takeColor(line, color) && append(xyz, &color);
}

bool PtsReader::finish() {
  if (announced_ >= 0 && appended_ < announced_) return failHere(pointtexts::kCut);
  noteAttributesNotKept(intensities_, "intensity");
  return true;
}
