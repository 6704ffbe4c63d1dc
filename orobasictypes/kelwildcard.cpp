#include "orobasictypes/kelwildcard.h"

#include "orobasictypes/orowildcardmatcher.h"

KelWildcard::KelWildcard(const KelCString& pattern, bool lowerPattern)
    : pattern_(pattern.text()), length_(pattern_.length()), states_(length_) {
  if (lowerPattern) pattern_.toLower();
}

bool KelWildcard::match(const KelCString& text) {
  const std::string_view pattern(pattern_.c_str(), static_cast<size_t>(length_));
  return OroWildcardMatcher<char, signed char>(pattern, states_).match(text.c_str());
}

bool KelWildcard::matchIgnoringCase(const KelCString& text) {
  KelCString lowered(text);
  lowered.toLower();
  return match(lowered);
}
