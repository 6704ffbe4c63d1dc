// listOf: the integers of a list, in its order, as what the matchers of containers understand.
#pragma once

#include <cstdint>
#include <vector>

#include "orobasictypes/orointlist.h"

namespace tests {

inline std::vector<int32_t> listOf(const OroIntList& list) { return {list.begin(), list.end()}; }

}  // namespace tests
