// The library "commandline": options and the way out of the process.

#include "components/commandline/commandline.h"
#include "components/commandline/exitservice.h"
#include "components/commandline/runoutcome.h"
#include "components/commandline/verboselines.h"
#include "components/kit/orocomponentrecord.h"

namespace {

constexpr GUID kComponentId = {
    0x47EAA099, 0x2CB6, 0x416D, {0x86, 0xDC, 0x28, 0x3C, 0xF0, 0x48, 0x0F, 0xF9}};

constexpr OroClassEntry kClasses[] = {
    {{0x1509BB0A, 0x9BF1, 0x4331, {0x8A, 0x11, 0x87, 0x83, 0x59, 0x39, 0x42, 0xA4}},
     CommandLine::className(),
     OroSharing::shared,
     oroMake<CommandLine>},
    {{0xF5EC52ED, 0x0108, 0x4475, {0x92, 0xE1, 0xBC, 0x76, 0x56, 0x67, 0x0B, 0x14}},
     ExitService::className(),
     OroSharing::eachNew,
     oroMake<ExitService>},
    {{0x5B87C45C, 0xC13D, 0x4FEC, {0xA2, 0x46, 0xD1, 0x2E, 0xD4, 0x8E, 0xAF, 0x77}},
     RunOutcome::className(),
     OroSharing::shared,
     oroMake<RunOutcome>},
};

// What was loaded after the last step, or where there was none.
void stopping() {
  if (isVerbose()) printNewLoads();
}

}  // namespace

const OroComponentRecord oroComponentRecord{.name = "commandline",
                                            .id = kComponentId,
                                            .classes = kClasses,
                                            .stopping = stopping,
                                            .translations = "commandline"};
