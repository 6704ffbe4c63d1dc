// The ids of the test components and their classes.
#pragma once

#include "orobasictypes/oroguid.h"

namespace testids {

constexpr GUID makeId(uint32_t first) { return {first, 0x1111, 0x2222, {1, 2, 3, 4, 5, 6, 7, 8}}; }

inline constexpr GUID kGood = makeId(0x600D0001);
inline constexpr GUID kPlainClass = makeId(0x600D0002);     // a new ITestProbe each time
inline constexpr GUID kSharedClass = makeId(0x600D0003);    // one ITestProbe for all
inline constexpr GUID kNullClass = makeId(0x600D0004);      // cannot be made
inline constexpr GUID kThrowingClass = makeId(0x600D0005);  // throws while it is made

inline constexpr GUID kRecorder = makeId(0x0EC00001);
inline constexpr GUID kUnknown = makeId(0xFFFF0001);

}  // namespace testids
