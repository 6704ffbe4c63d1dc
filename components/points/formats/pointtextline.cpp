#include "components/points/formats/pointtextline.h"

#include <charconv>
#include <cmath>
#include <cstring>

bool PointTextLine::skipSeparator() {
  const char* const before = at_;
  skipBlanks();
  if (at_ != end_ && (*at_ == ',' || *at_ == ';')) {
    ++at_;
    skipBlanks();
  }
  return at_ != before;
}

// A number as people write it; from_chars does not know the leading plus.
bool PointTextLine::takeReal(double& value) {
  const char* first = at_;
  if (first != end_ && *first == '+') ++first;
  if (first != at_ && first != end_ && *first == '-') return false;
  const auto [next, error] = std::from_chars(first, end_, value);
  if (error != std::errc{} || !std::isfinite(value)) return false;
  at_ = next;
  return true;
}

bool PointTextLine::takeChannel(uint8_t& value) {
  const auto [next, error] = std::from_chars(at_, end_, value);
  if (error != std::errc{}) return false;
  at_ = next;
  return true;
}

bool PointTextLine::takeWhole(int64_t& value) {
  const auto [next, error] = std::from_chars(at_, end_, value);
  if (error != std::errc{}) return false;
  at_ = next;
  return true;
}

std::string_view PointTextLine::rest() const {
  std::string_view text(at_, static_cast<size_t>(lineEnd() - at_));
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

const char* PointTextLine::lineEnd() const {
  const auto left = static_cast<size_t>(end_ - at_);
  const void* found = left == 0 ? nullptr : std::memchr(at_, '\n', left);
  return found == nullptr ? end_ : static_cast<const char*>(found);
}
