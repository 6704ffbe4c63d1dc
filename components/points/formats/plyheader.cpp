#include "components/points/formats/plyheader.h"

#include <algorithm>

#include "components/points/formats/pointtexts.h"
#include "components/points/formats/pointwords.h"

namespace {

constexpr size_t kLongestPlyLine = 4096;
constexpr int64_t kMostPlyLines = 10000;

struct TypeName {
  std::string_view name;
  PointScalar type;
};

constexpr TypeName kTypeNames[] = {
    {"char", PointScalar::int8},       {"double", PointScalar::float64},
    {"float", PointScalar::float32},   {"float32", PointScalar::float32},
    {"float64", PointScalar::float64}, {"int", PointScalar::int32},
    {"int16", PointScalar::int16},     {"int32", PointScalar::int32},
    {"int8", PointScalar::int8},       {"short", PointScalar::int16},
    {"uchar", PointScalar::uint8},     {"uint", PointScalar::uint32},
    {"uint16", PointScalar::uint16},   {"uint32", PointScalar::uint32},
    {"uint8", PointScalar::uint8},     {"ushort", PointScalar::uint16},
};

}  // namespace

bool PlyElement::hasLists() const {
  return std::any_of(properties.begin(), properties.end(),
                     [](const PlyProperty& property) { return property.isList; });
}

int64_t PlyElement::smallestRecord(PlyForm form) const {
  if (form == PlyForm::ascii) return 2 * std::ssize(properties);
  int64_t size = 0;
  for (const PlyProperty& property : properties) {
    size += static_cast<int64_t>(
        pointScalarSize(property.isList ? property.lengthType : property.type));
  }
  return size;
}

int PlyElement::find(const char* property) const {
  for (size_t i = 0; i < properties.size(); ++i) {
    if (properties[i].name == property) return static_cast<int>(i);
  }
  return -1;
}

bool PlyHeader::read(PointInputBuffer& bytes) {
  std::string_view line;
  while (true) {
    ++line_;
    if (!bytes.line(line, kLongestPlyLine)) {
      return fail(bytes.atEnd() ? pointtexts::kCutHeader : pointtexts::kLongLine);
    }
    if (line_ == 1) {
      if (line != "ply") return fail(pointtexts::kPlyBadLine, line);
    } else if (line == "end_header") {
      return hasForm_ || fail(pointtexts::kPlyBadForm);
    } else if (line_ > kMostPlyLines) {
      return fail(pointtexts::kLongHeader);
    } else if (!takeLine(line)) {
      return false;
    }
  }
}

bool PlyHeader::takeLine(std::string_view line) {
  const std::vector<std::string_view> words = pointWordsOf(line);
  if (words.empty()) return fail(pointtexts::kPlyBadLine, line);
  if (words[0] == "comment" || words[0] == "obj_info") return true;
  if (words[0] == "format") return takeForm(words);
  if (words[0] == "element") return takeElement(words);
  if (words[0] == "property") return takeProperty(words);
  return fail(pointtexts::kPlyBadLine, line);
}

bool PlyHeader::takeForm(const std::vector<std::string_view>& words) {
  if (hasForm_) return fail(pointtexts::kPlyTwice, words[0]);
  if (words.size() != 3 || words[2] != "1.0") {
    return fail(pointtexts::kPlyBadForm, words.size() < 2 ? std::string_view() : words[1]);
  }
  hasForm_ = true;
  if (words[1] == "ascii") {
    form_ = PlyForm::ascii;
  } else if (words[1] == "binary_little_endian") {
    form_ = PlyForm::littleEndian;
  } else if (words[1] == "binary_big_endian") {
    form_ = PlyForm::bigEndian;
  } else {
    return fail(pointtexts::kPlyBadForm, words[1]);
  }
  return true;
}

bool PlyHeader::takeElement(const std::vector<std::string_view>& words) {
  if (words.size() != 3) return fail(pointtexts::kPlyBadLine, words[0]);
  PlyElement element;
  element.name = words[1];
  if (!pointWholeNumber(words[2], element.count) || element.count < 0) {
    return fail(pointtexts::kBadCount);
  }
  for (const PlyElement& other : elements_) {
    if (other.name == element.name) return fail(pointtexts::kPlyTwice, element.name);
  }
  elements_.push_back(std::move(element));
  return true;
}

bool PlyHeader::takeProperty(const std::vector<std::string_view>& words) {
  const bool isList = words.size() > 1 && words[1] == "list";
  if (elements_.empty() || words.size() != (isList ? 5u : 3u)) {
    return fail(pointtexts::kPlyBadLine, words[0]);
  }
  PlyProperty property;
  property.isList = isList;
  property.name = words.back();
  if (isList && !takeType(words[2], property.lengthType)) return false;
  if (!takeType(words[words.size() - 2], property.type)) return false;
  PlyElement& element = elements_.back();
  if (element.find(property.name.c_str()) >= 0) {
    return fail(pointtexts::kPlyTwice, property.name);
  }
  element.properties.push_back(std::move(property));
  return true;
}

bool PlyHeader::takeType(std::string_view word, PointScalar& type) {
  for (const TypeName& known : kTypeNames) {
    if (known.name == word) {
      type = known.type;
      return true;
    }
  }
  return fail(pointtexts::kPlyBadType, word);
}

bool PlyHeader::fail(const char* problem, std::string_view argument) {
  problem_ = problem;
  argument_ = argument;
  return false;
}
