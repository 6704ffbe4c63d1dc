// The library "batch": works through a directory of files.

#include "components/batch/batchprocessor.h"
#include "components/kit/orocomponentrecord.h"

namespace {

constexpr GUID kComponentId = {
    0x6D3E4122, 0x7272, 0x41FF, {0xB9, 0x6A, 0x34, 0xDD, 0xE5, 0x42, 0x61, 0x93}};

constexpr OroClassEntry kClasses[] = {
    {{0x3789A078, 0x0757, 0x449D, {0x82, 0x00, 0x53, 0x66, 0x77, 0x41, 0x59, 0x24}},
     BatchProcessor::className(),
     OroSharing::shared,
     oroMake<BatchProcessor>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{
    .name = "batch", .id = kComponentId, .classes = kClasses, .translations = "batch"};
