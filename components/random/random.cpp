// The library "random": random numbers.

#include "components/kit/orocomponentrecord.h"
#include "components/random/randomsource.h"

namespace {

constexpr GUID kComponentId = {
    0x7C19E4A3, 0x52B8, 0x4F06, {0x9D, 0x73, 0x0B, 0xE1, 0x48, 0xA6, 0xF2, 0x5C}};

constexpr OroClassEntry kClasses[] = {
    {{0x2E8A5D10, 0x94C7, 0x4B3F, {0xA8, 0x61, 0xD5, 0x3C, 0x07, 0x9E, 0xB4, 0x12}},
     RandomSource::className(),
     OroSharing::eachNew,
     oroMake<RandomSource>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"random", kComponentId, kClasses};
