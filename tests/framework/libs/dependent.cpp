// A component that cannot be loaded without the library beside it.

#include "components/kit/orocomponentrecord.h"
#include "tests/framework/libs/testids.h"

extern "C" int helperAnswer();

const OroComponentRecord oroComponentRecord{
    "dependent", testids::makeId(static_cast<uint32_t>(helperAnswer())), {}};
