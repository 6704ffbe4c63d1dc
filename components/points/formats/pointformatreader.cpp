#include "components/points/formats/pointformatreader.h"

#include <algorithm>
#include <string>
#include <vector>

#include "components/points/formats/pointtexts.h"
#include "components/points/formats/pointwords.h"

namespace {

constexpr size_t kBlock = 1024;  // points that are converted at a time
constexpr size_t kLongestLine = 65536;

}  // namespace

bool PointFormatReader::failAtByte(int64_t byte, const char* key, std::string_view argument) {
  problem_ = {key, pointText(argument), false, byte};
  return false;
}

bool PointFormatReader::failAtLine(int64_t line, const char* key, std::string_view argument) {
  problem_ = {key, pointText(argument), true, line};
  return false;
}

void PointFormatReader::note(const char* key, std::string_view first, std::string_view second) {
  notes_.push_back({key, pointText(first), pointText(second)});
}

bool PointFormatReader::countFits(const PointInputBuffer& bytes, int64_t count, int64_t smallest,
                                  int64_t missing) {
  if (count > PointCloudHead::kMostPoints) {
    return failAtByte(bytes.position(), pointtexts::kTooMany);
  }
  const int64_t left = bytes.left();
  if (left < 0 || count <= (left + missing) / smallest) return true;
  return failAtByte(bytes.position(), pointtexts::kCountTooLarge, std::to_string(count));
}

bool PointFormatReader::failCut(const PointInputBuffer& bytes) {
  return failAtByte(bytes.position() + static_cast<int64_t>(bytes.ready()), pointtexts::kCut);
}

void PointFormatReader::noteAttributesNotKept(int64_t points, std::string_view names) {
  if (points == 0 || names.empty()) return;
  note(pointtexts::kNoteAttributesNotKept, std::to_string(points), names);
}

void PointFormatReader::noteColorsRounded() {
  if (colorsRounded_ > 0) note(pointtexts::kNoteColorsRounded, std::to_string(colorsRounded_));
}

void PointFormatReader::noteBehind(PointInputBuffer& bytes) {
  int64_t behind = 0;
  while (bytes.fillUp() > 0) {
    behind += static_cast<int64_t>(bytes.ready());
    bytes.skip(bytes.ready());
  }
  if (behind > 0) note(pointtexts::kNoteBehind, std::to_string(behind));
}

bool PointFormatReader::readRecords(PointInputBuffer& bytes, PointSink& sink,
                                    const PointRecordLayout& layout, int64_t count) {
  const size_t stride = layout.stride;
  const size_t most = std::min(kBlock, PointInputBuffer::kRoom / stride);
  std::vector<double> xyz(3 * most);
  std::vector<PointColor> colors(layout.hasColors ? most : 0);
  while (count > 0) {
    const auto now = static_cast<size_t>(std::min(count, static_cast<int64_t>(most)));
    if (!bytes.fill(now * stride)) return failCut(bytes);
    if (!takeCoordinates(bytes, layout, xyz.data(), now)) return false;
    for (int i = 0; i < 3 && layout.hasColors; ++i) {
      const PointColorColumn column = pointColorColumn(layout.rgb[i].type, layout.swapped);
      colorsRounded_ += column(bytes.data() + layout.rgb[i].offset, stride, now,
                               reinterpret_cast<uint8_t*>(colors.data()) + i, sizeof(PointColor));
    }
    bytes.skip(now * stride);
    if (!sink.addPoints(xyz.data(), layout.hasColors ? colors.data() : nullptr, now)) return false;
    count -= static_cast<int64_t>(now);
  }
  return true;
}

bool PointFormatReader::takeCoordinates(const PointInputBuffer& bytes,
                                        const PointRecordLayout& layout, double* xyz,
                                        size_t count) {
  for (int i = 0; i < 3; ++i) {
    const PointRecordLayout::Column& at = layout.xyz[i];
    pointColumn(at.type, layout.swapped)(bytes.data() + at.offset, layout.stride, count, xyz + i,
                                         3);
  }
  const size_t bad = pointFirstNotFinite(xyz, 3 * count);
  if (bad == 3 * count) return true;
  const size_t offset = bad / 3 * layout.stride + layout.xyz[bad % 3].offset;
  return failAtByte(bytes.position() + static_cast<int64_t>(offset), pointtexts::kNotFinite);
}

bool PointFormatReader::nextLine(PointInputBuffer& bytes, std::string_view& line) {
  do {
    ++line_;
    if (bytes.line(line, kLongestLine)) continue;
    return failAtLine(line_, bytes.atEnd() ? pointtexts::kCut : pointtexts::kLongLine);
  } while (pointIsBlank(line));
  return true;
}
