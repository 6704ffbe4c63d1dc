#include "components/points/formats/csvreader.h"

#include <algorithm>

#include "components/points/formats/pointtexts.h"

namespace {

constexpr std::string_view kFieldBlanks = " \t";

std::string_view stripped(std::string_view field) {
  const size_t first = std::min(field.find_first_not_of(kFieldBlanks), field.size());
  field.remove_prefix(first);
  field = field.substr(0, field.find_last_not_of(kFieldBlanks) + 1);
  if (field.size() > 1 && field.front() == '"' && field.back() == '"') {
    field = field.substr(1, field.size() - 2);
  }
  return field;
}

std::string lower(std::string_view text) {
  std::string all(text);
  for (char& c : all) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return all;
}

bool beginsNames(char c) {
  return c == '"' || c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Which coordinate or channel a name means: 0 to 2, 3 to 5, or -1.
int meaning(const std::string& name) {
  constexpr const char* kNames[][2] = {{"x", "x"},   {"y", "y"},     {"z", "z"},
                                       {"red", "r"}, {"green", "g"}, {"blue", "b"}};
  for (int i = 0; i < 6; ++i) {
    if (name == kNames[i][0] || name == kNames[i][1]) return i;
  }
  return -1;
}

}  // namespace

bool CsvReader::takeLine(PointTextLine& line, PointInputBuffer&) {
  const std::string_view text = line.rest();
  const bool names = first_ && beginsNames(*line.at());
  first_ = false;
  if (!names && separator_ == 0) return takePoint(line);
  line.goTo(line.lineEnd());
  return names ? takeNames(text) : takeRow(text);
}

bool CsvReader::takeNames(std::string_view line) {
  const size_t place = line.find_first_of(",;\t");
  separator_ = place == std::string_view::npos ? ',' : line[place];
  for (bool more = true; more; ++columns_) {
    const std::string_view name = stripped(nextField(line, more));
    const int found = meaning(lower(name));
    int& column = found < 3 ? xyz_[std::max(found, 0)] : rgb_[found - 3];
    if (found >= 0 && column < 0) {
      column = columns_;
    } else {
      addNotKept(name);
    }
  }
  if (std::count(xyz_, xyz_ + 3, -1) > 0) return failHere(pointtexts::kNoColumns);
  if (std::count(rgb_, rgb_ + 3, -1) > 0) {
    constexpr const char* kChannels[] = {"red", "green", "blue"};
    for (int i = 0; i < 3; ++i) {
      if (rgb_[i] >= 0) addNotKept(kChannels[i]);
      rgb_[i] = -1;
    }
  }
  return true;
}

void CsvReader::addNotKept(std::string_view name) {
  if (!notKept_.empty()) notKept_ += ", ";
  notKept_ += name;
}

bool CsvReader::finish() {
  noteAttributesNotKept(appended_, notKept_);
  return true;
}

// Up to the separator; one inside quotes separates nothing.
std::string_view CsvReader::nextField(std::string_view& rest, bool& more) const {
  bool quoted = false;
  size_t end = 0;
  for (; end < rest.size() && (quoted || rest[end] != separator_); ++end) {
    quoted = quoted != (rest[end] == '"');
  }
  const std::string_view field = rest.substr(0, end);
  more = end < rest.size();
  rest.remove_prefix(more ? end + 1 : end);
  return field;
}

bool CsvReader::takeRow(std::string_view line) {
  double xyz[3] = {0, 0, 0};
  PointColor color;
  int column = 0;
  for (bool more = true; more; ++column) {
    const std::string_view field = nextField(line, more);
    if (column >= columns_) return failHere(pointtexts::kOtherWidth);
    if (!takeField(stripped(field), column, xyz, color)) return false;
  }
  if (column < columns_) return failHere(pointtexts::kOtherWidth);
  return append(xyz, rgb_[0] >= 0 ? &color : nullptr);
}

bool CsvReader::takeField(std::string_view field, int column, double* xyz, PointColor& color) {
  PointTextLine text(field);
  const char* const end = field.data() + field.size();
  uint8_t* const channels[] = {&color.red, &color.green, &color.blue};
  for (int i = 0; i < 3; ++i) {
    if (xyz_[i] == column) {
      if (!takeCoordinate(text, xyz[i])) return false;
      return text.at() == end || failHere(pointtexts::kBadCoordinate);
    }
    if (rgb_[i] == column) {
      const bool good = text.takeChannel(*channels[i]) && text.at() == end;
      return good || failHere(pointtexts::kBadColor);
    }
  }
  return true;
}
