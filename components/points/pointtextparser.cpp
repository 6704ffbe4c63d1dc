#include "components/points/pointtextparser.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

// The way a file writes its numbers shows in its first points; the rest need not be looked at.
constexpr size_t kDecimalsSample = 3000;
constexpr int kMostDecimals = 15;

bool isBlank(char c) { return c == ' ' || c == '\t'; }

const char* skipBlanks(const char* at, const char* end) {
  while (at != end && isBlank(*at)) ++at;
  return at;
}

// Passes over one separator: blanks, with at most one comma or semicolon among them. Null when
// there is none, so that "1 2 3x" or "1,,2" is no point.
const char* skipSeparator(const char* at, const char* end) {
  const char* next = skipBlanks(at, end);
  if (next != end && (*next == ',' || *next == ';')) return skipBlanks(next + 1, end);
  return next == at ? nullptr : next;
}

// A number as people write it; from_chars does not know the leading plus.
bool parseReal(const char*& at, const char* end, double& value) {
  const char* first = at;
  if (first != end && *first == '+') ++first;
  if (first != at && first != end && *first == '-') return false;
  const auto [next, error] = std::from_chars(first, end, value);
  if (error != std::errc{} || !std::isfinite(value)) return false;
  at = next;
  return true;
}

}  // namespace

bool PointTextParser::feed(const char* text, size_t size) {
  if (problem_ != nullptr) return false;
  const char* const end = text + size;
  if (!rest_.empty()) {
    const char* lineEnd = static_cast<const char*>(std::memchr(text, '\n', size));
    const char* taken = lineEnd == nullptr ? end : lineEnd + 1;
    if (rest_.size() + static_cast<size_t>(taken - text) > kLongestLine + 2) {
      ++line_;
      return fail("the line is too long");
    }
    rest_.append(text, taken);
    if (lineEnd == nullptr) return true;
    std::string line;
    line.swap(rest_);
    parseLines(line.data(), line.data() + line.size());
    text = taken;
  }
  if (problem_ != nullptr) return false;
  text = parseLines(text, end);
  if (problem_ != nullptr) return false;
  if (static_cast<size_t>(end - text) > kLongestLine + 1) {
    ++line_;
    return fail("the line is too long");
  }
  rest_.assign(text, end);
  return true;
}

bool PointTextParser::finish() {
  if (problem_ == nullptr && !rest_.empty()) {
    ++line_;
    parseLine(rest_.data(), rest_.data() + rest_.size());
  }
  cloud_.decimals = decimalsFixed_ && decimalsSeen_ > 0 ? cloud_.decimals : PointCloud::kShortest;
  return problem_ == nullptr;
}

// Parses the whole lines and gives where the unfinished one begins.
const char* PointTextParser::parseLines(const char* text, const char* end) {
  while (true) {
    const char* lineEnd =
        static_cast<const char*>(std::memchr(text, '\n', static_cast<size_t>(end - text)));
    if (lineEnd == nullptr) return text;
    ++line_;
    if (!parseLine(text, lineEnd)) return text;
    text = lineEnd + 1;
  }
}

bool PointTextParser::parseLine(const char* at, const char* end) {
  if (static_cast<size_t>(end - at) > kLongestLine) return fail("the line is too long");
  if (end != at && end[-1] == '\r') --end;
  if (line_ == 1 && end - at >= 3 && std::memcmp(at, "\xEF\xBB\xBF", 3) == 0) at += 3;
  at = skipBlanks(at, end);
  if (at == end || *at == '#') return true;

  double values[3];
  for (int i = 0; i < 3; ++i) {
    if (i > 0) at = skipSeparator(at, end);
    if (at == nullptr || at == end) return fail("a point needs three coordinates");
    const char* number = at;
    if (!parseReal(at, end, values[i])) return fail("a coordinate is no number");
    if (decimalsSeen_ < kDecimalsSample) noteDecimals(number, at);
  }
  const PointPosition position{values[0], values[1], values[2]};
  const char* next = skipSeparator(at, end);
  if (next == nullptr && at != end && *at != '#') return fail("a coordinate is no number");
  if (next == nullptr || next == end || *next == '#') {
    const char* last = skipBlanks(at, end);
    if (last != end && *last != '#') return fail("a separator has nothing behind it");
    return append(position, nullptr);
  }
  PointColor color;
  return parseColor(next, end, color) && append(position, &color);
}

bool PointTextParser::parseColor(const char*& at, const char* end, PointColor& color) {
  uint8_t* const channels[] = {&color.red, &color.green, &color.blue};
  for (int i = 0; i < 3; ++i) {
    if (i > 0) at = skipSeparator(at, end);
    if (at == nullptr || at == end || *at == '#') return fail("a colour needs three values");
    const auto [next, error] = std::from_chars(at, end, *channels[i]);
    if (error != std::errc{}) return fail("a colour value is no whole number from 0 to 255");
    at = next;
  }
  at = skipBlanks(at, end);
  if (at == end || *at == '#') return true;
  return fail("there is more behind the colour");
}

bool PointTextParser::append(const PointPosition& position, const PointColor* color) {
  const size_t count = cloud_.positions.size();
  if (count >= kMostPoints) return fail("the file holds too many points");
  if (count > 0 && cloud_.hasColors() != (color != nullptr)) {
    return fail("some points have a colour and some have none");
  }
  cloud_.positions.push_back(position);
  if (color != nullptr) cloud_.colors.push_back(*color);
  return true;
}

void PointTextParser::noteDecimals(const char* text, const char* end) {
  ++decimalsSeen_;
  const char* point = nullptr;
  for (const char* at = text; at != end; ++at) {
    if (*at == '.') point = at;
    if (*at == 'e' || *at == 'E') decimalsFixed_ = false;
  }
  const int digits = point == nullptr ? 0 : static_cast<int>(end - point) - 1;
  if (digits > kMostDecimals) decimalsFixed_ = false;
  cloud_.decimals = std::max(cloud_.decimals, digits);
}

bool PointTextParser::fail(const char* problem) {
  problem_ = problem;
  return false;
}
