// The elements of a native document file, beside those that all model files share.
//
//   KEL, version 1
//     document        int32: the number of clouds
//     object          for each cloud: the id of point clouds, then
//       wide text     its name
//       form          int32: digits behind the point, -1 for the shortest text
//       scale         double
//       grid          six doubles: scale of x, y, z, offset of x, y, z; may be absent
//       colours       the chunk of colours; may be absent
//       points        the chunk of a point array
//       selection     the chunk of a bit vector; may be absent
#pragma once

#include <cstdint>

#include "orobasictypes/oroguid.h"

namespace cwltags {

inline constexpr uint32_t kRoot = 0x4B454C;
inline constexpr uint32_t kWideText = 0x10005;
inline constexpr uint32_t kObject = 0xB0002;
inline constexpr uint32_t kDocument = 0x435701;
inline constexpr uint32_t kForm = 0x435702;
inline constexpr uint32_t kScale = 0x435703;
inline constexpr uint32_t kGrid = 0x435704;
inline constexpr uint32_t kColors = 0x435705;
inline constexpr uint32_t kPoints = 0x435706;
inline constexpr uint32_t kSelection = 0x435707;

// The versions of the elements of this file alone, that is of all but the shared ones.
inline constexpr uint32_t kVersion = 1;

// Of an object that is a cloud of points: the class of its data in the document.
inline constexpr GUID kCloudId = {
    0x9B0E0F52, 0x2C1D, 0x4A77, {0x8E, 0x31, 0x64, 0xD0, 0x5A, 0x7C, 0x1B, 0x90}};

// First words of the chunks.
inline constexpr uint32_t kPointArray = 0xB916B00;
inline constexpr uint32_t kBitVector = 0x315E97D6;

// Flags in front of the colours.
inline constexpr uint32_t kHasColors = 1;
inline constexpr uint32_t kPackedColors = 2;

}  // namespace cwltags
