// The library "initserver": the first that the executable loads, before anything else is known.

#include "components/initserver/kelinitserver.h"
#include "components/kit/orocomponentrecord.h"

namespace {

// The host keeps this component under the id of all zeros and asks for a new object each time.
constexpr OroClassEntry kClasses[] = {
    {{0x87B8EFFD, 0xA228, 0x495D, {0x96, 0xE0, 0xA5, 0x0F, 0xDB, 0xA4, 0x25, 0xA3}},
     KelInitServer::className(),
     OroSharing::eachNew,
     oroMake<KelInitServer>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"initserver", GUID{}, kClasses};
