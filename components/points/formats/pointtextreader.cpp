#include "components/points/formats/pointtextreader.h"

#include <cstring>

#include "components/points/formats/pointtexts.h"

bool PointTextReader::read(PointInputBuffer& bytes, PointSink& sink) {
  sink_ = &sink;
  if (!readLines(bytes) || !finish()) return false;
  if (!told_ && !isBegun()) announced_ = 0;  // a file without points is a cloud without points
  return endCloud();
}

// Lines are parsed where they lie, without looking for their ends first.
bool PointTextReader::readLines(PointInputBuffer& bytes) {
  while (const size_t ready = bytes.fillUp()) {
    const std::string_view text(bytes.data(), ready);
    // The last line of the file may be without its line feed.
    const size_t whole = ready < PointInputBuffer::kRoom ? ready : text.rfind('\n') + 1;
    if (whole == 0) {
      ++line_;
      return failHere(pointtexts::kLongLine);
    }
    const char* const end = text.data() + whole;
    while (bytes.data() != end) {
      if (!readLine(bytes, end)) return false;
    }
  }
  return true;
}

bool PointTextReader::readLine(PointInputBuffer& bytes, const char* end) {
  ++line_;
  const char* const begin = bytes.data();
  const bool hasMark = line_ == 1 && end - begin >= 3 && std::memcmp(begin, "\xEF\xBB\xBF", 3) == 0;
  PointTextLine line(hasMark ? begin + 3 : begin, end);
  if (!line.isOver() && !takeLine(line, bytes)) return false;
  const char* const lineEnd = line.lineEnd();
  if (static_cast<size_t>(lineEnd - begin) > kLongestLine) return failHere(pointtexts::kLongLine);
  bytes.skip(static_cast<size_t>(lineEnd - begin) + (lineEnd == end ? 0 : 1));
  return true;
}

bool PointTextReader::takeLine(PointTextLine& line, PointInputBuffer&) { return takePoint(line); }

bool PointTextReader::takePoint(PointTextLine& line) {
  double xyz[3];
  for (int i = 0; i < 3; ++i) {
    const bool apart = i == 0 || line.skipSeparator();
    if (line.isOver()) return failHere(pointtexts::kThreeCoordinates);
    if (!apart) return failHere(pointtexts::kBadCoordinate);
    if (!takeCoordinate(line, xyz[i])) return false;
  }
  const char* const behind = line.at();
  const bool apart = line.skipSeparator();
  if (line.isOver()) {
    line.goTo(behind);
    line.skipBlanks();
    return line.isOver() ? append(xyz, nullptr) : failHere(pointtexts::kNothingBehind);
  }
  if (!apart) return failHere(pointtexts::kBadCoordinate);
  PointColor color;
  return takeColor(line, color) && append(xyz, &color);
}

bool PointTextReader::takeCoordinate(PointTextLine& line, double& value) {
  const char* const text = line.at();
  if (!line.takeReal(value)) return failHere(pointtexts::kBadCoordinate);
  decimals_.look(text, line.at());
  return true;
}

bool PointTextReader::takeColor(PointTextLine& line, PointColor& color) {
  uint8_t* const channels[] = {&color.red, &color.green, &color.blue};
  for (int i = 0; i < 3; ++i) {
    const bool apart = i == 0 || line.skipSeparator();
    if (line.isOver()) return failHere(pointtexts::kThreeColors);
    if (!apart || !line.takeChannel(*channels[i])) return failHere(pointtexts::kBadColor);
  }
  line.skipBlanks();
  return line.isOver() || failHere(pointtexts::kMoreBehindColor);
}

bool PointTextReader::append(const double* xyz, const PointColor* color) {
  if (appended_ >= PointCloudHead::kMostPoints) return failHere(pointtexts::kTooMany);
  if (appended_ == 0) {
    hasColors_ = color != nullptr;
  } else if (hasColors_ != (color != nullptr)) {
    return failHere(pointtexts::kSomeColors);
  }
  ++appended_;
  std::memcpy(&xyz_[3 * gathered_], xyz, 3 * sizeof(double));
  if (color != nullptr) colors_[gathered_] = *color;
  return ++gathered_ < kBlock || flush();
}

bool PointTextReader::begin() {
  if (told_) return true;
  PointCloudHead head;
  head.count = announced_;
  head.hasColors = hasColors_;
  told_ = true;
  return sink_->beginCloud(head);
}

bool PointTextReader::flush() {
  const size_t count = gathered_;
  gathered_ = 0;
  return begin() && (count == 0 ||
                     sink_->addPoints(xyz_.data(), hasColors_ ? colors_.data() : nullptr, count));
}

bool PointTextReader::endCloud() {
  if (!isBegun()) return true;
  if (!flush() || !sink_->endCloud(decimals_.found())) return false;
  announced_ = -1;
  appended_ = 0;
  hasColors_ = told_ = false;
  decimals_ = PointDecimals();
  return true;
}
