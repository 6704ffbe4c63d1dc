// The tags of a model file's elements: 24 bits each. docs/formats/model-file.md tells their bodies.
//
// What a component saves has tags of its own, apart from these.
#pragma once

#include <cstdint>

namespace orofiletags {

constexpr int32_t kRoot = 0x4B454C;  // the letters KEL
constexpr int32_t kPoint = 0x10000;
constexpr int32_t kText = 0x10003;
constexpr int32_t kMatrix = 0x10004;
constexpr int32_t kOroString = 0x10005;
constexpr int32_t kId = 0x10008;
constexpr int32_t kDoublePair = 0x10009;
constexpr int32_t kFloatPair = 0x10010;
constexpr int32_t kObject = 0xB0002;
constexpr int32_t kStringObject = 0xB0003;

}  // namespace orofiletags
