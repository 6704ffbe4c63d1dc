#include "components/points/formats/plyreader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "components/points/formats/pointtexts.h"
#include "components/points/formats/pointwords.h"

namespace {

constexpr size_t kPlyBlock = 1024;  // points that are converted at a time

constexpr const char* kColorNames[][3] = {
    {"red", "green", "blue"}, {"diffuse_red", "diffuse_green", "diffuse_blue"}, {"r", "g", "b"}};

bool isWhole(PointScalar type) {
  return type != PointScalar::float32 && type != PointScalar::float64;
}

}  // namespace

struct PlyReader::Record {
  double xyz[3] = {0, 0, 0};
  PointColor color;
  uint8_t& channel(int i) { return i == 0 ? color.red : i == 1 ? color.green : color.blue; }
};

bool PlyReader::recognises(std::string_view head) {
  return head.starts_with("ply\n") || head.starts_with("ply\r");
}

bool PlyReader::read(PointInputBuffer& bytes, PointSink& sink) {
  bytes_ = &bytes;
  sink_ = &sink;
  if (!header_.read(bytes)) {
    return failAtLine(header_.line(), header_.problem(), header_.argument());
  }
  line_ = header_.line();
  const auto& elements = header_.elements();
  const auto vertex = std::find_if(elements.begin(), elements.end(),
                                   [](const PlyElement& e) { return e.name == "vertex"; });
  if (vertex == elements.end() || !choose(*vertex)) {
    return failAtLine(line_, pointtexts::kPlyNoPoints);
  }
  for (const PlyElement& element : elements) {
    if (!readElement(element)) return false;
  }
  noteLosses();
  return true;
}

bool PlyReader::choose(const PlyElement& vertex) {
  constexpr const char* kAxes[] = {"x", "y", "z"};
  for (int axis = 0; axis < 3; ++axis) {
    wanted_.xyz[axis] = vertex.find(kAxes[axis]);
    if (wanted_.xyz[axis] < 0 || vertex.properties[wanted_.xyz[axis]].isList) return false;
  }
  for (const auto& names : kColorNames) {
    int found[3];
    bool whole = true;
    for (int i = 0; i < 3; ++i) {
      found[i] = vertex.find(names[i]);
      whole = whole && found[i] >= 0 && !vertex.properties[found[i]].isList &&
              pointColorColumn(vertex.properties[found[i]].type, false) != nullptr;
    }
    if (!whole) continue;
    std::copy(found, found + 3, wanted_.rgb);
    break;
  }
  return true;
}

bool PlyReader::readElement(const PlyElement& element) {
  const int64_t smallest = element.smallestRecord(header_.form());
  const int64_t lineEnd = header_.form() == PlyForm::ascii ? 1 : 0;
  if (smallest > 0 && !countFits(*bytes_, element.count, smallest, lineEnd)) return false;
  return element.name == "vertex" ? readPoints(element) : skipElement(element);
}

bool PlyReader::readPoints(const PlyElement& vertex) {
  PointCloudHead head;
  head.count = bytes_->left() < 0 ? -1 : vertex.count;
  head.hasColors = wanted_.hasColors();
  if (!sink_->beginCloud(head)) return false;
  bool whole;
  if (header_.form() == PlyForm::ascii) {
    whole = readLines(vertex);
  } else {
    whole = vertex.hasLists() ? readUneven(vertex) : readColumns(vertex);
  }
  return whole && sink_->endCloud(PointCloudHead::kShortest);
}

bool PlyReader::readColumns(const PlyElement& vertex) {
  PointRecordLayout layout;
  layout.swapped = swapped();
  layout.hasColors = wanted_.hasColors();
  for (int i = 0; i < static_cast<int>(vertex.properties.size()); ++i) {
    const PlyProperty& property = vertex.properties[i];
    for (int k = 0; k < 3; ++k) {
      if (wanted_.xyz[k] == i) layout.xyz[k] = {layout.stride, property.type};
      if (wanted_.rgb[k] == i) layout.rgb[k] = {layout.stride, property.type};
    }
    layout.stride += pointScalarSize(property.type);
  }
  return readRecords(*bytes_, *sink_, layout, vertex.count);
}

bool PlyReader::give(const double* xyz, const PointColor* colors, size_t count) {
  return sink_->addPoints(xyz, wanted_.hasColors() ? colors : nullptr, count);
}

// With lists among its properties each record has a length of its own.
bool PlyReader::readUneven(const PlyElement& vertex) {
  for (int64_t i = 0; i < vertex.count; ++i) {
    Record record;
    if (!takeRecord(vertex, record)) return false;
    if (!give(record.xyz, &record.color, 1)) return false;
  }
  return true;
}

bool PlyReader::takeRecord(const PlyElement& vertex, Record& record) {
  for (int i = 0; i < static_cast<int>(vertex.properties.size()); ++i) {
    const PlyProperty& property = vertex.properties[i];
    const int* axis = std::find(wanted_.xyz, wanted_.xyz + 3, i);
    const int* channel = std::find(wanted_.rgb, wanted_.rgb + 3, i);
    if (axis == wanted_.xyz + 3 && channel == wanted_.rgb + 3) {
      if (!skipProperty(property)) return false;
      continue;
    }
    const size_t size = pointScalarSize(property.type);
    if (!bytes_->fill(size)) return failCut(*bytes_);
    if (axis != wanted_.xyz + 3) {
      double& value = record.xyz[axis - wanted_.xyz];
      pointColumn(property.type, swapped())(bytes_->data(), 0, 1, &value, 0);
      if (!std::isfinite(value)) return failAtByte(bytes_->position(), pointtexts::kNotFinite);
    } else {
      uint8_t& value = record.channel(static_cast<int>(channel - wanted_.rgb));
      colorsRounded_ += pointColorColumn(property.type, swapped())(bytes_->data(), 0, 1, &value, 0);
    }
    bytes_->skip(size);
  }
  return true;
}

bool PlyReader::readLines(const PlyElement& vertex) {
  std::vector<double> xyz;
  std::vector<PointColor> colors;
  xyz.reserve(3 * kPlyBlock);
  colors.reserve(kPlyBlock);
  for (int64_t i = 0; i < vertex.count; ++i) {
    std::string_view line;
    Record record;
    if (!nextLine(*bytes_, line) || !takeLine(vertex, line, record)) return false;
    xyz.insert(xyz.end(), record.xyz, record.xyz + 3);
    colors.push_back(record.color);
    if (colors.size() < kPlyBlock && i + 1 < vertex.count) continue;
    if (!give(xyz.data(), colors.data(), colors.size())) return false;
    xyz.clear();
    colors.clear();
  }
  return true;
}

bool PlyReader::takeLine(const PlyElement& vertex, std::string_view line, Record& record) {
  for (size_t i = 0; i < vertex.properties.size(); ++i) {
    const std::string_view word = pointTakeWord(line);
    if (word.empty()) return failAtLine(line_, pointtexts::kMissingNumber);
    if (!vertex.properties[i].isList) {
      if (!takeWord(vertex, i, word, record)) return false;
      continue;
    }
    int64_t length = 0;
    if (!pointWholeNumber(word, length) || length < 0) {
      return failAtLine(line_, pointtexts::kPlyBadList);
    }
    for (; length > 0; --length) {
      if (pointTakeWord(line).empty()) return failAtLine(line_, pointtexts::kMissingNumber);
    }
  }
  return pointIsBlank(line) || failAtLine(line_, pointtexts::kMoreNumbers);
}

bool PlyReader::takeWord(const PlyElement& vertex, size_t property, std::string_view word,
                         Record& record) {
  for (int i = 0; i < 3; ++i) {
    if (wanted_.xyz[i] == static_cast<int>(property)) {
      if (!pointNumber(word, record.xyz[i])) return failAtLine(line_, pointtexts::kNoNumber, word);
      return std::isfinite(record.xyz[i]) || failAtLine(line_, pointtexts::kNotFinite);
    }
    if (wanted_.rgb[i] == static_cast<int>(property)) {
      return takeColorWord(vertex.properties[property].type, word, record.channel(i));
    }
  }
  return true;
}

// By the declared type, as in the binary forms.
bool PlyReader::takeColorWord(PointScalar type, std::string_view word, uint8_t& channel) {
  if (isWhole(type)) {
    int64_t value = 0;
    const int64_t most = type == PointScalar::uint8 ? 255 : 65535;
    if (!pointWholeNumber(word, value) || value < 0 || value > most) {
      return failAtLine(line_, pointtexts::kBadColor);
    }
    const auto bits = static_cast<uint16_t>(value);
    const auto byte = static_cast<uint8_t>(value);
    const char* from = reinterpret_cast<const char*>(&byte);
    if (type != PointScalar::uint8) from = reinterpret_cast<const char*>(&bits);
    colorsRounded_ += pointColorColumn(type, false)(from, 0, 1, &channel, 0);
    return true;
  }
  double share = 0;
  if (!pointNumber(word, share)) return failAtLine(line_, pointtexts::kNoNumber, word);
  const auto narrow = static_cast<float>(share);
  const char* from = reinterpret_cast<const char*>(&narrow);
  pointColorColumn(PointScalar::float32, false)(from, 0, 1, &channel, 0);
  // Text has few digits: what lies close to a step is that step.
  colorsRounded_ += std::fabs(share * 255 - channel) > 0.01;
  return true;
}

bool PlyReader::skipElement(const PlyElement& element) {
  if (header_.form() == PlyForm::ascii) {
    std::string_view line;
    for (int64_t i = 0; i < element.count && !element.properties.empty(); ++i) {
      if (!nextLine(*bytes_, line)) return false;
    }
    return true;
  }
  if (!element.hasLists()) {
    const int64_t size = element.smallestRecord(header_.form());
    if (size == 0) return true;
    if (element.count > INT64_MAX / size) return failCut(*bytes_);
    return bytes_->skipFar(element.count * size) || failCut(*bytes_);
  }
  for (int64_t i = 0; i < element.count; ++i) {
    for (const PlyProperty& property : element.properties) {
      if (!skipProperty(property)) return false;
    }
  }
  return true;
}

bool PlyReader::skipProperty(const PlyProperty& property) {
  const auto size = static_cast<int64_t>(pointScalarSize(property.type));
  if (!property.isList) return bytes_->skipFar(size) || failCut(*bytes_);
  const size_t lengthSize = pointScalarSize(property.lengthType);
  if (!bytes_->fill(lengthSize)) return failCut(*bytes_);
  double length = 0;
  pointColumn(property.lengthType, swapped())(bytes_->data(), 0, 1, &length, 0);
  if (!isWhole(property.lengthType) || length < 0) {
    return failAtByte(bytes_->position(), pointtexts::kPlyBadList);
  }
  bytes_->skip(lengthSize);
  return bytes_->skipFar(static_cast<int64_t>(length) * size) || failCut(*bytes_);
}

void PlyReader::noteLosses() {
  std::string elements;
  std::string attributes;
  int64_t points = 0;
  auto add = [](std::string& lost, const std::string& what) {
    lost += (lost.empty() ? "" : ", ") + what;
  };
  for (const PlyElement& element : header_.elements()) {
    if (element.count == 0) continue;
    if (element.name != "vertex") {
      add(elements, std::to_string(element.count) + " " + element.name);
      continue;
    }
    points = element.count;
    for (int i = 0; i < static_cast<int>(element.properties.size()); ++i) {
      if (std::count(wanted_.xyz, wanted_.xyz + 3, i) + std::count(wanted_.rgb, wanted_.rgb + 3, i))
        continue;
      add(attributes, element.properties[i].name);
    }
  }
  noteAttributesNotKept(points, attributes);
  if (!elements.empty()) note(pointtexts::kNoteNotKept, elements);
  noteColorsRounded();
  if (header_.form() != PlyForm::ascii) noteBehind(*bytes_);
}
