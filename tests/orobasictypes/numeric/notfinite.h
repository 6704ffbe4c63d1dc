// The coordinates that are no finite number, by short names: damaged files and failed computations
// bring them.
#pragma once

#include <limits>

namespace tests {

inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace tests
