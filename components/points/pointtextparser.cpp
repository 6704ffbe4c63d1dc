#include "components/points/pointtextparser.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

#include "orobasictypes/orotranslate.h"

namespace {

// The way a file writes its numbers shows in its first points; the rest need not be looked at.
constexpr size_t kDecimalsSample = 3000;
constexpr int kMostDecimals = 15;
constexpr const char* kTooMany = oroKey("the file holds too many points");

bool isBlank(char c) { return c == ' ' || c == '\t'; }

const char* skipBlanks(const char* at, const char* end) {
  while (at != end && isBlank(*at)) ++at;
  return at;
}

// Whether nothing more of the line counts: its end, or a comment.
bool isOver(const char* at, const char* end) {
  if (at == end || *at == '\n' || *at == '#') return true;
  return *at == '\r' && (at + 1 == end || at[1] == '\n');
}

// Passes over one separator: blanks, with at most one comma or semicolon among them. False when
// there is none, so that "1 2 3x" or "1,,2" is no point.
bool skipSeparator(const char*& at, const char* end) {
  const char* next = skipBlanks(at, end);
  if (next != end && (*next == ',' || *next == ';')) next = skipBlanks(next + 1, end);
  const bool found = next != at;
  at = next;
  return found;
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
    if (rest_.size() + static_cast<size_t>(taken - text) > kLongestLine + 2) return failLong();
    rest_.append(text, taken);
    if (lineEnd == nullptr) return true;
    std::string line;
    line.swap(rest_);
    if (!parseLines(line.data(), line.data() + line.size())) return false;
    text = taken;
  }
  const size_t last = std::string_view(text, static_cast<size_t>(end - text)).rfind('\n');
  const char* const whole = last == std::string_view::npos ? text : text + last + 1;
  if (!parseLines(text, whole)) return false;
  if (static_cast<size_t>(end - whole) > kLongestLine + 1) return failLong();
  rest_.assign(whole, end);
  return true;
}

bool PointTextParser::finish() {
  if (problem_ == nullptr) parseLines(rest_.data(), rest_.data() + rest_.size());
  if (!handOver() && problem_ == nullptr) fail(kTooMany);
  if (!decimalsFixed_ || decimalsSeen_ == 0) cloud_.decimals = PointCloud::kShortest;
  return problem_ == nullptr;
}

// The last of the lines may be without its line feed.
bool PointTextParser::parseLines(const char* at, const char* end) {
  while (at != end) {
    ++line_;
    const char* const start = at;
    if (line_ == 1 && end - at >= 3 && std::memcmp(at, "\xEF\xBB\xBF", 3) == 0) at += 3;
    at = skipBlanks(at, end);
    if (!isOver(at, end) && !parsePoint(at, end)) return false;
    if (at != end && *at == '#') {
      at = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)));
      if (at == nullptr) at = end;
    } else if (at != end && *at == '\r') {
      ++at;
    }
    if (static_cast<size_t>(at - start) > kLongestLine) return fail("the line is too long");
    if (at != end) ++at;
  }
  return true;
}

bool PointTextParser::parsePoint(const char*& at, const char* end) {
  double values[3];
  for (int i = 0; i < 3; ++i) {
    const bool apart = i == 0 || skipSeparator(at, end);
    if (isOver(at, end)) return fail("a point needs three coordinates");
    if (!apart) return fail("a coordinate is no number");
    const char* const number = at;
    if (!parseReal(at, end, values[i])) return fail("a coordinate is no number");
    if (decimalsSeen_ < kDecimalsSample) noteDecimals(number, at);
  }
  const char* const behind = at;
  const bool separated = skipSeparator(at, end);
  if (isOver(at, end)) {
    if (!isOver(skipBlanks(behind, end), end)) return fail("a separator has nothing behind it");
    return append(values, nullptr);
  }
  if (!separated) return fail("a coordinate is no number");
  PointColor color;
  return parseColor(at, end, color) && append(values, &color);
}

bool PointTextParser::parseColor(const char*& at, const char* end, PointColor& color) {
  uint8_t* const channels[] = {&color.red, &color.green, &color.blue};
  for (int i = 0; i < 3; ++i) {
    const bool apart = i == 0 || skipSeparator(at, end);
    if (isOver(at, end)) return fail("a colour needs three values");
    if (!apart) return fail("a colour value is no whole number from 0 to 255");
    const auto [next, error] = std::from_chars(at, end, *channels[i]);
    if (error != std::errc{}) return fail("a colour value is no whole number from 0 to 255");
    at = next;
  }
  at = skipBlanks(at, end);
  return isOver(at, end) || fail("there is more behind the colour");
}

bool PointTextParser::append(const double* position, const PointColor* color) {
  if (isFirst_) hasColors_ = color != nullptr;
  isFirst_ = false;
  if (hasColors_ != (color != nullptr)) {
    return fail("some points have a colour and some have none");
  }
  if (gathered_ == kGathered && !handOver()) return fail(kTooMany);
  std::copy_n(position, 3, positions_ + 3 * gathered_);
  if (color != nullptr) colors_[gathered_] = *color;
  ++gathered_;
  return true;
}

bool PointTextParser::handOver() {
  const int32_t count = gathered_;
  gathered_ = 0;
  return cloud_.add(positions_, hasColors_ ? colors_ : nullptr, count);
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

bool PointTextParser::failLong() {
  ++line_;
  return fail("the line is too long");
}

bool PointTextParser::fail(const char* problem) {
  problem_ = problem;
  return false;
}
