#include "components/points/formats/lasreader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "components/points/formats/pointscalar.h"
#include "components/points/formats/pointtexts.h"

namespace {

constexpr size_t kLasBlock = 1024;   // points that are converted at a time
constexpr size_t kCoordinates = 12;  // bytes of them in front of each point

// What stands in a point beside coordinates and colours. `plain` is what it holds where nobody gave
// it a meaning, beside 0.
struct Attribute {
  const char* name;
  int offset;
  int size;  // bytes
  uint8_t plain = 0;
};

constexpr Attribute kOldAttributes[] = {
    {"intensity", 12, 2},  {"return number", 14, 1, 0x09}, {"classification", 15, 1},
    {"scan angle", 16, 1}, {"user data", 17, 1},           {"point source", 18, 2},
};
constexpr Attribute kNewAttributes[] = {
    {"intensity", 12, 2},    {"return number", 14, 1, 0x11},
    {"flags", 15, 1},        {"classification", 16, 1},
    {"user data", 17, 1},    {"scan angle", 18, 2},
    {"point source", 20, 2}, {"GPS time", 22, 8},
};

// Behind those: where an attribute stands in each point format, or -1.
struct Further {
  const char* name;
  int size;
  int offsets[9];
};

constexpr Further kFurther[] = {
    {"GPS time", 8, {-1, 20, -1, 20, 20, 20, -1, -1, -1}},
    {"near infrared", 2, {-1, -1, -1, -1, -1, -1, -1, -1, 36}},
    {"wave packet", 29, {-1, -1, -1, -1, 28, 34, -1, -1, -1}},
};

}  // namespace

bool LasReader::recognises(std::string_view head) { return head.starts_with("LASF"); }

bool LasReader::read(PointInputBuffer& bytes, PointSink& sink) {
  if (!readHeader(bytes)) return false;
  if (LasHeader::colorOffset(header_.pointFormat) >= 0 && !findColorForm(bytes)) return false;
  if (!readPoints(bytes, sink)) return false;
  noteLosses(bytes);
  return true;
}

bool LasReader::readHeader(PointInputBuffer& bytes) {
  if (bytes.fill(4) && !recognises({bytes.data(), 4})) return failAtByte(0, pointtexts::kLasNone);
  const bool whole = bytes.fill(LasHeader::kSmallest) &&
                     (!LasHeader::needs14(bytes.data()) || bytes.fill(LasHeader::kOf14));
  if (!whole) return failAtByte(static_cast<int64_t>(bytes.ready()), pointtexts::kCutHeader);
  std::string argument;
  int64_t place = 0;
  if (const char* problem = header_.take(bytes.data(), argument, place)) {
    return failAtByte(place, problem, argument);
  }
  if (!bytes.skipFar(header_.pointOffset)) {
    return failAtByte(bytes.position(), pointtexts::kCutHeader);
  }
  const auto most = static_cast<uint64_t>(PointCloudHead::kMostPoints) + 1;
  return countFits(bytes, static_cast<int64_t>(std::min(header_.count, most)), header_.recordSize);
}

// Some programs put 8 bits into the 16 of a channel: then no channel of the file exceeds 255. Most
// files tell by their first points. What can be read once only is taken as most files are.
bool LasReader::findColorForm(PointInputBuffer& bytes) {
  if (bytes.left() < 0) return true;
  const int at = LasHeader::colorOffset(header_.pointFormat);
  const auto stride = static_cast<size_t>(header_.recordSize);
  bool wide = false;
  bool any = false;
  for (uint64_t left = header_.count; left > 0 && !wide;) {
    const auto count = static_cast<size_t>(
        std::min<uint64_t>({left, kLasBlock, PointInputBuffer::kRoom / stride}));
    if (!bytes.fill(count * stride)) return failCut(bytes);
    for (size_t i = 0; i < count; ++i) {
      uint16_t channels[3];
      std::memcpy(channels, bytes.data() + i * stride + at, sizeof channels);
      const int together = channels[0] | channels[1] | channels[2];
      wide = wide || together > 0xFF;
      any = any || together != 0;
    }
    bytes.skip(count * stride);
    left -= count;
  }
  colors16_ = wide || !any;
  if (bytes.restart() && bytes.skipFar(header_.pointOffset)) return true;
  return failCut(bytes);
}

bool LasReader::readPoints(PointInputBuffer& bytes, PointSink& sink) {
  PointCloudHead head;
  head.count = bytes.left() < 0 ? -1 : static_cast<int64_t>(header_.count);
  head.hasColors = LasHeader::colorOffset(header_.pointFormat) >= 0;
  head.grid = header_.grid;
  LasGrid grids[3] = {{header_.grid.scale[0], header_.grid.offset[0]},
                      {header_.grid.scale[1], header_.grid.offset[1]},
                      {header_.grid.scale[2], header_.grid.offset[2]}};
  head.decimals = grids[0].decimals();
  for (const LasGrid& grid : grids) {
    const bool decimal = head.decimals >= 0 && grid.decimals() >= 0;
    head.decimals = decimal ? std::max(head.decimals, grid.decimals()) : PointCloudHead::kShortest;
  }
  if (!sink.beginCloud(head)) return false;
  const auto stride = static_cast<size_t>(header_.recordSize);
  bits_.any.assign(stride, '\0');
  bits_.all.assign(stride, '\xFF');
  const size_t most = std::min(kLasBlock, PointInputBuffer::kRoom / stride);
  std::vector<double> xyz(3 * most);
  std::vector<PointColor> colors(head.hasColors ? most : 0);
  for (uint64_t left = header_.count; left > 0;) {
    const size_t count = static_cast<size_t>(std::min<uint64_t>(left, most));
    if (!bytes.fill(count * stride)) return failCut(bytes);
    if (!takeCoordinates(bytes, grids, xyz.data(), count)) return false;
    if (head.hasColors) takeColors(bytes.data(), colors.data(), count);
    takeBits(bytes.data(), count);
    bytes.skip(count * stride);
    if (!sink.addPoints(xyz.data(), head.hasColors ? colors.data() : nullptr, count)) return false;
    left -= count;
  }
  return sink.endCloud(head.decimals);
}

bool LasReader::takeCoordinates(const PointInputBuffer& bytes, const LasGrid* grids, double* xyz,
                                size_t count) {
  const auto stride = static_cast<size_t>(header_.recordSize);
  for (size_t axis = 0; axis < 3; ++axis) {
    const LasGrid grid = grids[axis];
    const char* from = bytes.data() + 4 * axis;
    for (size_t i = 0; i < count; ++i, from += stride) {
      int32_t raw;
      std::memcpy(&raw, from, sizeof raw);
      xyz[3 * i + axis] = grid.coordinate(raw);
    }
  }
  const size_t bad = pointFirstNotFinite(xyz, 3 * count);
  if (bad == 3 * count) return true;
  return failAtByte(bytes.position() + static_cast<int64_t>(bad / 3 * stride + bad % 3 * 4),
                    pointtexts::kNotFinite);
}

void LasReader::takeColors(const char* records, PointColor* colors, size_t count) {
  const auto stride = static_cast<size_t>(header_.recordSize);
  const PointColorColumn column =
      pointColorColumn(colors16_ ? PointScalar::uint16 : PointScalar::uint8, false);
  for (int i = 0; i < 3; ++i) {
    const char* from = records + LasHeader::colorOffset(header_.pointFormat) + 2 * i;
    colorsRounded_ +=
        column(from, stride, count, reinterpret_cast<uint8_t*>(colors) + i, sizeof(PointColor));
  }
}

void LasReader::takeBits(const char* records, size_t count) {
  const auto stride = static_cast<size_t>(header_.recordSize);
  constexpr size_t kWord = sizeof(uint64_t);
  // Word by word; the last one may overlap the one before.
  for (size_t byte = kCoordinates; byte < stride; byte += kWord) {
    const size_t at = std::min(byte, stride - kWord);
    uint64_t any, all, word;
    std::memcpy(&any, &bits_.any[at], kWord);
    std::memcpy(&all, &bits_.all[at], kWord);
    for (const char* from = records + at; from < records + count * stride; from += stride) {
      std::memcpy(&word, from, kWord);
      any |= word;
      all &= word;
    }
    std::memcpy(&bits_.any[at], &any, kWord);
    std::memcpy(&bits_.all[at], &all, kWord);
  }
}

void LasReader::noteLosses(PointInputBuffer& bytes) {
  if (header_.count > 0) {
    noteAttributesNotKept(static_cast<int64_t>(header_.count), lostAttributes());
  }
  std::string lost;
  auto add = [&](uint64_t count, const char* what) {
    if (count > 0) lost += (lost.empty() ? "" : ", ") + std::to_string(count) + what;
  };
  add(header_.furtherRecords, " records before the points");
  add(header_.lateRecords, " records behind the points");
  if (!lost.empty()) note(pointtexts::kNoteNotKept, lost);
  noteColorsRounded();
  if (header_.lateRecords == 0) noteBehind(bytes);
}

// The names of what is not the same as in a file that nobody gave anything to.
std::string LasReader::lostAttributes() const {
  std::string lost;
  auto look = [&](const char* name, int offset, int size, uint8_t plain) {
    bool zero = true;
    for (int i = offset; i < offset + size; ++i) zero = zero && bits_.any[i] == 0;
    const auto byte = static_cast<char>(plain);
    if (zero || (plain != 0 && bits_.any[offset] == byte && bits_.all[offset] == byte)) return;
    lost += (lost.empty() ? "" : ", ") + std::string(name);
  };
  if (header_.pointFormat < 6) {
    for (const Attribute& a : kOldAttributes) look(a.name, a.offset, a.size, a.plain);
  } else {
    for (const Attribute& a : kNewAttributes) look(a.name, a.offset, a.size, a.plain);
  }
  for (const Further& further : kFurther) {
    const int offset = further.offsets[header_.pointFormat];
    if (offset >= 0) look(further.name, offset, further.size, 0);
  }
  const int own = LasHeader::smallestRecord(header_.pointFormat);
  look("extra bytes", own, header_.recordSize - own, 0);
  return lost;
}
