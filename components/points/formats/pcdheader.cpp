#include "components/points/formats/pcdheader.h"

#include <algorithm>

#include "components/points/formats/pointtexts.h"
#include "components/points/formats/pointwords.h"

namespace {

constexpr size_t kLongestPcdLine = 65536;
constexpr int64_t kMostPcdLines = 1000;
constexpr int64_t kMostNumbers = 65536;  // of one field

}  // namespace

bool PcdField::scalar(PointScalar& scalar) const {
  struct Row {
    char type;
    int64_t size;
    PointScalar scalar;
  };
  constexpr Row kRows[] = {
      {'F', 4, PointScalar::float32}, {'F', 8, PointScalar::float64}, {'I', 1, PointScalar::int8},
      {'I', 2, PointScalar::int16},   {'I', 4, PointScalar::int32},   {'U', 1, PointScalar::uint8},
      {'U', 2, PointScalar::uint16},  {'U', 4, PointScalar::uint32},
  };
  for (const Row& row : kRows) {
    if (row.type != type || row.size != size || count != 1) continue;
    scalar = row.scalar;
    return true;
  }
  return false;
}

const PcdField* PcdHeader::find(std::string_view name) const {
  const auto found = std::find_if(fields_.begin(), fields_.end(),
                                  [&](const PcdField& field) { return field.name == name; });
  return found == fields_.end() ? nullptr : &*found;
}

bool PcdHeader::read(PointInputBuffer& bytes) {
  std::string_view line;
  while (true) {
    ++line_;
    if (!bytes.line(line, kLongestPcdLine)) {
      return fail(bytes.atEnd() ? pointtexts::kCutHeader : pointtexts::kLongLine);
    }
    if (line_ > kMostPcdLines) return fail(pointtexts::kLongHeader);
    const Words words = pointWordsOf(line);
    if (words.empty() || words[0].starts_with('#')) continue;
    if (words[0] == "DATA") return takeForm(words) && finish();
    if (!takeLine(words)) return false;
  }
}

bool PcdHeader::takeLine(const Words& words) {
  const std::string key(words[0] == "COLUMNS" ? "FIELDS" : words[0]);
  if (std::find(seen_.begin(), seen_.end(), key) != seen_.end()) {
    return fail(pointtexts::kPcdTwice, words[0]);
  }
  seen_.push_back(key);
  if (key == "VERSION") return true;
  if (key == "FIELDS") return takeFields(words);
  if (key == "SIZE") return takeSizes(words);
  if (key == "TYPE") return takeTypes(words);
  if (key == "COUNT") return takeCounts(words);
  if (key == "WIDTH") return takeNumber(words, width_);
  if (key == "HEIGHT") return takeNumber(words, height_);
  if (key == "POINTS") return takeNumber(words, count_);
  if (key == "VIEWPOINT") {
    const Words origin = pointWordsOf("VIEWPOINT 0 0 0 1 0 0 0");
    viewpoint_ = words != origin;
    return true;
  }
  return fail(pointtexts::kPcdBadLine, words[0]);
}

bool PcdHeader::takeFields(const Words& words) {
  for (size_t i = 1; i < words.size(); ++i) {
    PcdField field;
    field.name = words[i];
    fields_.push_back(std::move(field));
  }
  return true;
}

bool PcdHeader::takeSizes(const Words& words) {
  if (words.size() != fields_.size() + 1) return fail(pointtexts::kPcdBadLine, words[0]);
  for (size_t i = 0; i < fields_.size(); ++i) {
    int64_t& size = fields_[i].size;
    const bool good =
        pointWholeNumber(words[i + 1], size) && (size == 1 || size == 2 || size == 4 || size == 8);
    if (!good) return fail(pointtexts::kPcdBadField, fields_[i].name);
  }
  return true;
}

bool PcdHeader::takeTypes(const Words& words) {
  if (words.size() != fields_.size() + 1) return fail(pointtexts::kPcdBadLine, words[0]);
  for (size_t i = 0; i < fields_.size(); ++i) {
    const std::string_view type = words[i + 1];
    if (type != "I" && type != "U" && type != "F") {
      return fail(pointtexts::kPcdBadField, fields_[i].name);
    }
    fields_[i].type = type[0];
  }
  return true;
}

bool PcdHeader::takeCounts(const Words& words) {
  if (words.size() != fields_.size() + 1) return fail(pointtexts::kPcdBadLine, words[0]);
  for (size_t i = 0; i < fields_.size(); ++i) {
    int64_t& count = fields_[i].count;
    if (!pointWholeNumber(words[i + 1], count) || count < 1 || count > kMostNumbers) {
      return fail(pointtexts::kPcdBadField, fields_[i].name);
    }
  }
  return true;
}

bool PcdHeader::takeNumber(const Words& words, int64_t& number) {
  const bool good = words.size() == 2 && pointWholeNumber(words[1], number) && number >= 0;
  return good || fail(pointtexts::kBadCount);
}

bool PcdHeader::takeForm(const Words& words) {
  const std::string_view form = words.size() == 2 ? words[1] : std::string_view();
  if (form == "binary_compressed") return fail(pointtexts::kPcdCompressed);
  if (form != "binary" && form != "ascii") return fail(pointtexts::kPcdBadForm, form);
  binary_ = form == "binary";
  return true;
}

// With all lines read: what they say together.
bool PcdHeader::finish() {
  if (fields_.empty()) return fail(pointtexts::kPcdMissing, "FIELDS");
  if (fields_[0].size == 0) return fail(pointtexts::kPcdMissing, "SIZE");
  if (fields_[0].type == 0) return fail(pointtexts::kPcdMissing, "TYPE");
  if (width_ < 0) return fail(pointtexts::kPcdMissing, "WIDTH");
  if (height_ < 0) return fail(pointtexts::kPcdMissing, "HEIGHT");
  int64_t product = 0;
  if (__builtin_mul_overflow(width_, height_, &product)) return fail(pointtexts::kPcdCounts);
  if (count_ < 0) count_ = product;
  if (count_ != product) return fail(pointtexts::kPcdCounts);
  for (PcdField& field : fields_) {
    field.offset = stride_;
    field.word = words_;
    stride_ += static_cast<size_t>(field.size * field.count);
    words_ += static_cast<size_t>(field.count);
  }
  if (stride_ > PointInputBuffer::kRoom) return fail(pointtexts::kPcdBadLine, "COUNT");
  return true;
}

bool PcdHeader::fail(const char* problem, std::string_view argument) {
  problem_ = problem;
  argument_ = argument;
  return false;
}
