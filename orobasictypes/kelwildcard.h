// KelWildcard: the pattern of OroWildcard over narrow text. Bytes compare as signed, so a range
// never crosses from ASCII to the bytes above it.
#pragma once

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orowildcardstates.h"

class KelWildcard {
 public:
  explicit KelWildcard(const KelCString& pattern, bool lowerPattern = false);

  bool match(const KelCString& text);
  // Lowers the text alone; the pattern was lowered by the constructor, or is lower case.
  bool matchIgnoringCase(const KelCString& text);

 private:
  KelCString pattern_;  // owned
  int32_t length_;      // bytes of the pattern
  OroWildcardStates states_;
};
