#include "orobasictypes/oroasciihead.h"

#include <algorithm>

#include "orobasictypes/kelpool.h"
#include "orobasictypes/oronumbertext.h"

namespace {

// Letters are those of exponents, hexadecimal digits, "infinity" and "nan(...)".
bool maybeInNumber(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') ||
         (unit >= u'A' && unit <= u'Z') || unit == u'+' || unit == u'-' || unit == u'.' ||
         unit == u'(' || unit == u')' || unit == u'_';
}

}  // namespace

OroAsciiHead::OroAsciiHead(std::u16string_view text) {
  while (!text.empty() && oronumbers::isBlank(text.front())) text.remove_prefix(1);
  text = text.substr(0, INT32_MAX);  // what no block can hold ends as exhaustion
  const auto end = std::find_if_not(text.begin(), text.end(), maybeInNumber);
  length_ = static_cast<size_t>(end - text.begin());
  if (length_ > sizeof local_) {
    text_ = static_cast<char*>(kelPoolAlloc(static_cast<int32_t>(length_), capacity_));
  }
  std::transform(text.begin(), end, text_, [](char16_t unit) { return static_cast<char>(unit); });
}

OroAsciiHead::~OroAsciiHead() {
  if (capacity_ > 0) kelPoolFree(capacity_, text_);
}
