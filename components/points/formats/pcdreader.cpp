#include "components/points/formats/pcdreader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string>
#include <vector>

#include "components/points/formats/pointtexts.h"
#include "components/points/formats/pointwords.h"

namespace {

constexpr size_t kPcdBlock = 1024;  // points that are handed on at a time

// Where the channels stand in the four bytes of a packed colour.
constexpr size_t kChannelBytes[] = {2, 1, 0};

}  // namespace

bool PcdReader::recognises(std::string_view head) {
  while (head.starts_with('#')) {
    const size_t end = std::min(head.find('\n'), head.size());
    if (head.substr(0, end).find(".PCD v") != std::string_view::npos) return true;
    head.remove_prefix(std::min(end + 1, head.size()));
  }
  return head.starts_with("VERSION ") || head.starts_with("FIELDS ") ||
         head.starts_with("COLUMNS ");
}

bool PcdReader::read(PointInputBuffer& bytes, PointSink& sink) {
  const bool whole = header_.read(bytes);
  line_ = header_.line();
  if (!whole) return failAtLine(line_, header_.problem(), header_.argument());
  if (!choose()) return failAtLine(line_, pointtexts::kPcdNoPoints);
  const auto smallest = header_.isBinary() ? header_.stride() : 2 * header_.words();
  if (!countFits(bytes, header_.count(), static_cast<int64_t>(smallest),
                 header_.isBinary() ? 0 : 1)) {
    return false;
  }
  PointCloudHead head;
  head.count = bytes.left() < 0 ? -1 : header_.count();
  head.hasColors = color_ != nullptr;
  if (!sink.beginCloud(head)) return false;
  if (!(header_.isBinary() ? readBinary(bytes, sink) : readText(bytes, sink))) return false;
  noteLosses();
  if (header_.isBinary()) noteBehind(bytes);
  return sink.endCloud(PointCloudHead::kShortest);
}

bool PcdReader::choose() {
  constexpr const char* kAxes[] = {"x", "y", "z"};
  for (int axis = 0; axis < 3; ++axis) {
    xyz_[axis] = header_.find(kAxes[axis]);
    PointScalar scalar;
    if (xyz_[axis] == nullptr || !xyz_[axis]->scalar(scalar)) return false;
  }
  for (const char* name : {"rgb", "rgba"}) {
    const PcdField* field = header_.find(name);
    if (color_ == nullptr && field != nullptr && field->size == 4 && field->count == 1) {
      color_ = field;
    }
  }
  return true;
}

bool PcdReader::readBinary(PointInputBuffer& bytes, PointSink& sink) {
  PointRecordLayout layout;
  layout.stride = header_.stride();
  layout.hasColors = color_ != nullptr;
  for (size_t i = 0; i < 3; ++i) {
    layout.xyz[i].offset = xyz_[i]->offset;
    xyz_[i]->scalar(layout.xyz[i].type);
    if (color_ != nullptr) layout.rgb[i] = {color_->offset + kChannelBytes[i], PointScalar::uint8};
  }
  return readRecords(bytes, sink, layout, header_.count());
}

bool PcdReader::readText(PointInputBuffer& bytes, PointSink& sink) {
  std::vector<double> xyz(3 * kPcdBlock);
  std::vector<PointColor> colors(kPcdBlock);
  size_t ready = 0;
  for (int64_t i = 0; i < header_.count(); ++i) {
    std::string_view line;
    if (!nextLine(bytes, line) || !takeLine(line, &xyz[3 * ready], colors[ready])) return false;
    if (++ready < kPcdBlock && i + 1 < header_.count()) continue;
    if (!sink.addPoints(xyz.data(), color_ != nullptr ? colors.data() : nullptr, ready)) {
      return false;
    }
    ready = 0;
  }
  return true;
}

bool PcdReader::takeLine(std::string_view line, double* xyz, PointColor& color) {
  for (size_t i = 0; i < header_.words(); ++i) {
    const std::string_view word = pointTakeWord(line);
    if (word.empty()) return failAtLine(line_, pointtexts::kMissingNumber);
    for (int axis = 0; axis < 3; ++axis) {
      if (xyz_[axis]->word != i) continue;
      if (!pointNumber(word, xyz[axis])) return failAtLine(line_, pointtexts::kNoNumber, word);
      if (!std::isfinite(xyz[axis])) return failAtLine(line_, pointtexts::kNotFinite);
    }
    if (color_ != nullptr && color_->word == i && !takeColor(word, color)) return false;
  }
  return pointIsBlank(line) || failAtLine(line_, pointtexts::kMoreNumbers);
}

// A packed colour is the whole number, or the float of the same bits.
bool PcdReader::takeColor(std::string_view word, PointColor& color) {
  int64_t whole = 0;
  float real = 0;
  if (!pointWholeNumber(word, whole)) {
    if (color_->type != 'F' || !pointNumber(word, real)) {
      return failAtLine(line_, pointtexts::kNoNumber, word);
    }
    whole = std::bit_cast<uint32_t>(real);
  }
  color = {static_cast<uint8_t>(whole >> 16), static_cast<uint8_t>(whole >> 8),
           static_cast<uint8_t>(whole)};
  return true;
}

void PcdReader::noteLosses() {
  std::string attributes;
  std::string lost;
  auto add = [](std::string& all, const std::string& what) {
    all += (all.empty() ? "" : ", ") + what;
  };
  for (const PcdField& field : header_.fields()) {
    const bool kept = std::find(xyz_, xyz_ + 3, &field) != xyz_ + 3 || color_ == &field;
    if (!kept && field.name != "_") add(attributes, field.name);
  }
  if (header_.hasViewpoint()) add(lost, "viewpoint");
  if (header_.height() > 1) {
    add(lost, std::to_string(header_.height()) + " rows of " + std::to_string(header_.width()));
  }
  noteAttributesNotKept(header_.count(), attributes);
  if (!lost.empty()) note(pointtexts::kNoteNotKept, lost);
}
