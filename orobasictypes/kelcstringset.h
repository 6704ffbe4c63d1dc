// KelCStringSet: an ordered set of narrow texts, such as the tags of a class.
//
// The order is that of KelCString::compare: null first, then by unsigned bytes.
#pragma once

#include <set>

#include "orobasictypes/kelcstring.h"

struct KelCStringLess {
  bool operator()(const KelCString& a, const KelCString& b) const { return a.compare(b) < 0; }
};

using KelCStringSet = std::set<KelCString, KelCStringLess>;
