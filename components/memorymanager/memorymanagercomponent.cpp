// The library "memorymanager": blocks for the split arrays.

#include "components/kit/orocomponentrecord.h"
#include "components/memorymanager/memorymanager.h"

namespace {

constexpr GUID kComponentId = {
    0xB39FD364, 0x773B, 0x4DF6, {0x9B, 0xD8, 0x39, 0x46, 0x6F, 0xD6, 0x0D, 0xEC}};

constexpr OroClassEntry kClasses[] = {
    {{0x3A216F98, 0xB8A9, 0x45E2, {0x8E, 0x6F, 0x17, 0xBF, 0x16, 0xCA, 0x73, 0x4B}},
     MemoryManager::className(),
     OroSharing::shared,
     oroMake<MemoryManager>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"memorymanager", kComponentId, kClasses};
