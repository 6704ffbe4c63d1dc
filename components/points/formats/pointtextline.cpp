#include "components/points/formats/pointtextline.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "components/points/formats/pointreal.h"

// A number as people write it, a leading plus among it.
bool PointTextLine::takeReal(double& value) {
  const char* first = at_;
  if (first != end_ && *first == '+') ++first;
  if (first != at_ && first != end_ && *first == '-') return false;
  const char* const next = pointTakeReal(first, end_, value);
  if (next == nullptr || !std::isfinite(value)) return false;
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
  if (at_ == end_ || *at_ == '\n') return at_;
  const void* found = std::memchr(at_, '\n', static_cast<size_t>(end_ - at_));
  return found == nullptr ? end_ : static_cast<const char*>(found);
}
