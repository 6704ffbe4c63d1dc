// OroWildcard: a file-name pattern over wide text: "*" any text, "?" any unit, "[a-c]" a set.
//
//   OroWildcard texts(OroString(u"*.t?t", "*.t?t"));
//   if (texts.match(name)) ...
//
// No escape and no negation; a "[" without "]" matches nothing, not even itself. The cost is the
// text's length times the pattern's, and matching allocates nothing. Matching writes to the object:
// one thread at a time.
#pragma once

#include "orobasictypes/orostring.h"
#include "orobasictypes/orowildcardstates.h"

class OroWildcard {
 public:
  explicit OroWildcard(const OroString& pattern, bool lowerPattern = false);

  bool match(const OroString& text);
  // Lowers the text alone; the pattern was lowered by the constructor, or is lower case.
  bool matchIgnoringCase(const OroString& text);

 private:
  OroString pattern_;
  int32_t length_;  // units of the pattern
  OroWildcardStates states_;
};
