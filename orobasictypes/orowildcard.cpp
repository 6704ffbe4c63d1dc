#include "orobasictypes/orowildcard.h"

#include "orobasictypes/orowildcardmatcher.h"

OroWildcard::OroWildcard(const OroString& pattern, bool lowerPattern)
    : pattern_(lowerPattern ? pattern.toLower() : pattern),
      length_(pattern_.length()),
      states_(length_) {}

bool OroWildcard::match(const OroString& text) {
  const std::u16string_view pattern(pattern_.wideText(), static_cast<size_t>(length_));
  return OroWildcardMatcher<char16_t, char16_t>(pattern, states_).match(text.wideText());
}

bool OroWildcard::matchIgnoringCase(const OroString& text) { return match(text.toLower()); }
