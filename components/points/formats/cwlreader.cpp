#include "components/points/formats/cwlreader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <string>

#include "components/points/formats/cwltags.h"
#include "components/points/formats/pointscalar.h"
#include "components/points/formats/pointtexts.h"

namespace {

constexpr size_t kCwlBlock = 1024;       // points that are converted at a time
constexpr int64_t kLongestName = 65536;  // bytes
constexpr int64_t kSpareWords = 65536;   // of a selection, beyond what its points need
constexpr size_t kPointSize = 3 * sizeof(double);

uint32_t wordAt(const char* bytes) {
  uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  return __builtin_bswap32(word);
}

uint64_t longAt(const char* bytes) { return uint64_t{wordAt(bytes)} << 32 | wordAt(bytes + 4); }

uint16_t shortAt(const char* bytes) {
  return static_cast<uint16_t>(static_cast<uint8_t>(bytes[0]) << 8 |
                               static_cast<uint8_t>(bytes[1]));
}

}  // namespace

bool CwlReader::recognises(std::string_view head) { return head.starts_with("KEL"); }

bool CwlReader::read(PointInputBuffer& bytes, PointSink& sink) {
  bytes_ = &bytes;
  sink_ = &sink;
  Element root;
  if (!readRoot(root)) return false;
  while (bytes.position() < root.end) {
    Element element;
    if (!begin(root.end, element)) return false;
    if (announced_ < 0 && element.tag != cwltags::kDocument) {
      return failAtByte(element.start, pointtexts::kCwlOther);
    }
    bool good = true;
    if (element.tag == cwltags::kDocument) {
      good = readDocument(element);
    } else if (element.tag == cwltags::kObject) {
      good = readObject(element);
    } else {
      ++passedOver_;
    }
    if (!good || !end(element)) return false;
  }
  if (announced_ < 0) return failAtByte(root.body, pointtexts::kCwlOther);
  if (clouds_ != announced_) return failAtByte(bytes.position(), pointtexts::kCwlClouds);
  if (passedOver_ > 0) {
    note(pointtexts::kNoteNotKept, std::to_string(passedOver_) + " elements of other kinds");
  }
  noteColorsRounded();
  noteBehind(bytes);
  return true;
}

bool CwlReader::readRoot(Element& root) {
  if (bytes_->fill(3) && !recognises({bytes_->data(), 3})) {
    return failAtByte(0, pointtexts::kCwlNone);
  }
  if (!bytes_->fill(4)) return failAtByte(0, pointtexts::kCutHeader);
  root.version = wordAt(bytes_->data()) & 0xFF;
  if (root.version > 1) {
    return failAtByte(3, pointtexts::kCwlVersion, std::to_string(root.version));
  }
  sizeWidth_ = root.version == 0 ? 4 : 8;
  const size_t header = 4 + sizeWidth_;
  if (!bytes_->fill(header)) return failAtByte(0, pointtexts::kCutHeader);
  const char* const size = bytes_->data() + 4;
  const uint64_t whole = sizeWidth_ == 4 ? wordAt(size) : longAt(size);
  bytes_->skip(header);
  root.body = static_cast<int64_t>(header);
  // A writer that was cut off leaves a size of 0; its document is not whole.
  if (whole == 0) return failAtByte(4, pointtexts::kCut);
  if (whole < header || whole > INT64_MAX) return failAtByte(4, pointtexts::kCwlElement);
  root.end = static_cast<int64_t>(whole);
  if (bytes_->size() > 0 && root.end > bytes_->size()) {
    return failAtByte(bytes_->size(), pointtexts::kCut);
  }
  return true;
}

// Enters the next element, which has to end at `limit` at the latest.
bool CwlReader::begin(int64_t limit, Element& element) {
  const size_t header = 4 + sizeWidth_;
  element.start = bytes_->position();
  if (limit - element.start < static_cast<int64_t>(header)) {
    return failAtByte(element.start, pointtexts::kCwlElement);
  }
  if (!bytes_->fill(header)) return failCut(*bytes_);
  const uint32_t word = wordAt(bytes_->data());
  element.tag = word >> 8;
  element.version = word & 0xFF;
  const char* const at = bytes_->data() + 4;
  const uint64_t size = sizeWidth_ == 4 ? wordAt(at) : longAt(at);
  if (size < header || size > static_cast<uint64_t>(limit - element.start)) {
    return failAtByte(element.start, pointtexts::kCwlElement);
  }
  bytes_->skip(header);
  element.body = bytes_->position();
  element.end = element.start + static_cast<int64_t>(size);
  const bool own = element.tag >= cwltags::kDocument && element.tag <= cwltags::kSelection;
  if (own && element.version != cwltags::kVersion) {
    return failAtByte(element.start, pointtexts::kCwlVersion, std::to_string(element.version));
  }
  return true;
}

// Goes to the end of an element, over what is left of it.
bool CwlReader::end(const Element& element) {
  const int64_t left = element.end - bytes_->position();
  if (left < 0) return failAtByte(element.start, pointtexts::kCwlSize);
  return bytes_->skipFar(left) || failCut(*bytes_);
}

bool CwlReader::readDocument(const Element& element) {
  uint32_t count = 0;
  if (announced_ >= 0) return failAtByte(element.start, pointtexts::kCwlTwice);
  if (element.size() < 4) return failAtByte(element.start, pointtexts::kCwlSize);
  if (!takeWord(count)) return false;
  announced_ = count;
  return true;
}

bool CwlReader::readObject(const Element& object) {
  GUID id;
  if (object.size() < 16) return failAtByte(object.start, pointtexts::kCwlSize);
  if (!takeId(id)) return false;
  if (!(id == cwltags::kCloudId)) {
    ++passedOver_;
    return true;
  }
  if (object.version != cwltags::kVersion) {
    return failAtByte(object.start, pointtexts::kCwlVersion, std::to_string(object.version));
  }
  Cloud cloud;
  while (bytes_->position() < object.end) {
    Element part;
    if (!begin(object.end, part) || !readPart(part, cloud) || !end(part)) return false;
  }
  if (!cloud.hasPoints) return failAtByte(object.start, pointtexts::kCwlNoPoints);
  ++clouds_;
  return sink_->endCloud(cloud.head.decimals);
}

bool CwlReader::readPart(const Element& part, Cloud& cloud) {
  double number = 0;
  switch (part.tag) {
    case cwltags::kWideText:
      return readName(part, cloud);
    case cwltags::kForm: {
      uint32_t decimals = 0;
      if (part.size() < 4) return failAtByte(part.start, pointtexts::kCwlSize);
      if (!takeWord(decimals)) return false;
      cloud.head.decimals = decimals <= 15 ? static_cast<int>(decimals) : PointCloudHead::kShortest;
      return true;
    }
    case cwltags::kScale:
      if (!readNumbers(part, &number, 1)) return false;
      cloud.head.scale = number;
      return true;
    case cwltags::kGrid:
      return readGrid(part, cloud);
    case cwltags::kColors:
      return readColors(part, cloud);
    case cwltags::kPoints:
      return readPoints(part, cloud);
    case cwltags::kSelection:
      return readSelection(part, cloud);
    default:
      ++passedOver_;
      return true;
  }
}

bool CwlReader::readName(const Element& part, Cloud& cloud) {
  if (part.size() > kLongestName) return failAtByte(part.start, pointtexts::kCwlSize);
  const auto size = static_cast<size_t>(part.size());
  if (!bytes_->fill(size)) return failCut(*bytes_);
  OroString name;
  for (size_t at = 0; at + 1 < size; at += 2) {
    const uint16_t unit = shortAt(bytes_->data() + at);
    if (unit == 0) break;
    name.append(static_cast<char16_t>(unit));
  }
  cloud.head.name = name;
  return true;
}

bool CwlReader::readNumbers(const Element& part, double* numbers, size_t count) {
  const size_t size = count * sizeof(double);
  if (part.size() < static_cast<int64_t>(size)) {
    return failAtByte(part.start, pointtexts::kCwlSize);
  }
  if (!bytes_->fill(size)) return failCut(*bytes_);
  pointColumn(PointScalar::float64, true)(bytes_->data(), sizeof(double), count, numbers, 1);
  const size_t bad = pointFirstNotFinite(numbers, count);
  return bad == count ||
         failAtByte(part.body + static_cast<int64_t>(bad * sizeof(double)), pointtexts::kCwlNumber);
}

bool CwlReader::readGrid(const Element& part, Cloud& cloud) {
  double numbers[6];
  if (!readNumbers(part, numbers, 6)) return false;
  PointGrid grid;
  for (size_t axis = 0; axis < 3; ++axis) {
    grid.scale[axis] = numbers[axis];
    grid.offset[axis] = numbers[3 + axis];
    if (grid.scale[axis] == 0) return failAtByte(part.body, pointtexts::kCwlNumber);
  }
  cloud.head.grid = grid;
  return true;
}

// Colours come in whole words of channels, or as three floats from 0 to 1 each.
bool CwlReader::readColors(const Element& part, Cloud& cloud) {
  if (cloud.hasPoints) return failAtByte(part.start, pointtexts::kCwlOrder);
  if (!cloud.colors.empty()) return failAtByte(part.start, pointtexts::kCwlTwice);
  uint32_t flags = 0;
  uint32_t count = 0;
  if (part.size() < 4) return failAtByte(part.start, pointtexts::kCwlSize);
  if (!takeWord(flags)) return false;
  if ((flags & cwltags::kHasColors) == 0) return true;
  if (part.size() < 8) return failAtByte(part.start, pointtexts::kCwlSize);
  if (!takeWord(count)) return false;
  const bool packed = (flags & cwltags::kPackedColors) != 0;
  const size_t size = packed ? 4 : 12;
  if (count == 0 || part.size() != 8 + static_cast<int64_t>(count * size)) {
    return failAtByte(part.start, pointtexts::kCwlChunk);
  }
  for (uint32_t left = count; left > 0;) {
    const size_t now = std::min<size_t>(left, kCwlBlock);
    if (!bytes_->fill(now * size)) return failCut(*bytes_);
    cloud.colors.resize(cloud.colors.size() + now);
    auto* const to = reinterpret_cast<uint8_t*>(cloud.colors.data() + cloud.colors.size() - now);
    for (size_t i = 0; i < 3; ++i) {
      // Red is the lowest byte of a packed colour, and so the last one in the file.
      const char* const from = bytes_->data() + (packed ? 3 - i : 4 * i);
      const PointScalar type = packed ? PointScalar::uint8 : PointScalar::float32;
      const size_t rounded =
          pointColorColumn(type, true)(from, size, now, to + i, sizeof(PointColor));
      colorsRounded_ += rounded;
    }
    bytes_->skip(now * size);
    left -= static_cast<uint32_t>(now);
  }
  return true;
}

bool CwlReader::readPoints(const Element& part, Cloud& cloud) {
  uint32_t chunk = 0;
  uint32_t count = 0;
  if (cloud.hasPoints) return failAtByte(part.start, pointtexts::kCwlTwice);
  if (part.size() < 8) return failAtByte(part.start, pointtexts::kCwlSize);
  if (!takeWord(chunk) || !takeWord(count)) return false;
  if (chunk != cwltags::kPointArray ||
      part.size() != 8 + static_cast<int64_t>(count * kPointSize)) {
    return failAtByte(part.start, pointtexts::kCwlChunk);
  }
  if (count > PointCloudHead::kMostPoints) return failAtByte(part.start, pointtexts::kTooMany);
  const bool hasColors = !cloud.colors.empty();
  if (hasColors && cloud.colors.size() != size_t{count} + 1) {
    return failAtByte(part.start, pointtexts::kCwlColors);
  }
  cloud.hasPoints = true;
  cloud.head.count = bytes_->left() < 0 ? -1 : count;
  cloud.head.hasColors = hasColors;
  if (!sink_->beginCloud(cloud.head)) return false;
  double xyz[3 * kCwlBlock];
  for (uint32_t done = 0; done < count;) {
    const size_t now = std::min<size_t>(count - done, kCwlBlock);
    if (!bytes_->fill(now * kPointSize)) return failCut(*bytes_);
    pointColumn(PointScalar::float64, true)(bytes_->data(), sizeof(double), 3 * now, xyz, 1);
    const size_t bad = pointFirstNotFinite(xyz, 3 * now);
    if (bad != 3 * now) {
      return failAtByte(bytes_->position() + static_cast<int64_t>(bad * sizeof(double)),
                        pointtexts::kNotFinite);
    }
    bytes_->skip(now * kPointSize);
    const PointColor* const colors = hasColors ? cloud.colors.data() + 1 + done : nullptr;
    if (!sink_->addPoints(xyz, colors, now)) return false;
    done += static_cast<uint32_t>(now);
  }
  cloud.head.count = count;
  return true;
}

bool CwlReader::readSelection(const Element& part, Cloud& cloud) {
  if (!cloud.hasPoints) return failAtByte(part.start, pointtexts::kCwlNoPoints);
  if (cloud.hasSelection) return failAtByte(part.start, pointtexts::kCwlTwice);
  cloud.hasSelection = true;
  uint32_t chunk = 0;
  uint32_t words = 0;
  uint32_t maximum = 0;
  uint32_t form = 0;
  uint32_t set = 0;
  if (part.size() < 20) return failAtByte(part.start, pointtexts::kCwlSize);
  if (!takeWord(chunk) || !takeWord(words) || !takeWord(maximum) || !takeWord(form) ||
      !takeWord(set)) {
    return false;
  }
  const int64_t listed = form == 0 ? words : set;
  const bool good = chunk == cwltags::kBitVector && form <= 1 &&
                    words <= cloud.head.count / 32 + 1 + kSpareWords &&
                    part.size() == 20 + 4 * listed;
  if (!good) return failAtByte(part.start, pointtexts::kCwlChunk);
  BitVector selection(static_cast<int32_t>(cloud.head.count));
  const bool read = form == 0 ? readWords(selection, words, cloud.head.count)
                              : readIndices(selection, set, cloud.head.count);
  return read && sink_->select(selection);
}

bool CwlReader::readWords(BitVector& selection, uint32_t words, int64_t points) {
  for (uint32_t i = 0; i < words; ++i) {
    uint32_t bits = 0;
    if (!takeWord(bits)) return false;
    for (; bits != 0; bits &= bits - 1) {
      if (!select(selection, int64_t{32} * i + std::countr_zero(bits), points)) return false;
    }
  }
  return true;
}

bool CwlReader::readIndices(BitVector& selection, uint32_t indices, int64_t points) {
  for (uint32_t i = 0; i < indices; ++i) {
    uint32_t point = 0;
    if (!takeWord(point) || !select(selection, point, points)) return false;
  }
  return true;
}

bool CwlReader::select(BitVector& selection, int64_t point, int64_t points) {
  if (point < 1 || point > points) {
    return failAtByte(bytes_->position() - 4, pointtexts::kCwlSelected);
  }
  selection.Set(static_cast<int32_t>(point));
  return true;
}

bool CwlReader::takeWord(uint32_t& word) {
  if (!bytes_->fill(4)) return failCut(*bytes_);
  word = wordAt(bytes_->data());
  bytes_->skip(4);
  return true;
}

bool CwlReader::takeId(GUID& id) {
  if (!bytes_->fill(16)) return failCut(*bytes_);
  const char* const at = bytes_->data();
  id = {wordAt(at), shortAt(at + 4), shortAt(at + 6), {}};
  std::memcpy(id.data4, at + 8, sizeof id.data4);
  bytes_->skip(16);
  return true;
}
