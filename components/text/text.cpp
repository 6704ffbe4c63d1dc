// The library "text": the user's language, and text operations that depend on it.

#include "components/kit/orocomponentrecord.h"
#include "components/text/sessionlanguage.h"
#include "components/text/systemlocale.h"
#include "components/text/textsupport.h"

namespace {

constexpr GUID kComponentId = {
    0x07DCF392, 0x33E9, 0x4C3C, {0xA1, 0xC8, 0x91, 0x42, 0x9C, 0x1E, 0x1C, 0xDA}};

constexpr OroClassEntry kClasses[] = {
    {{0xAC6C6BF4, 0xD745, 0x4542, {0xA6, 0xD2, 0x52, 0x4D, 0x86, 0xEB, 0x50, 0xA6}},
     TextSupport::className(),
     OroSharing::shared,
     oroMake<TextSupport>},
    {{0xD52A7A95, 0x4248, 0x45A8, {0xB0, 0xA7, 0xB9, 0xA4, 0xC9, 0xED, 0x9A, 0x9A}},
     SessionLanguage::className(),
     OroSharing::shared,
     oroMake<SessionLanguage>},
    {{0xA7357EDC, 0x91C9, 0x4BDB, {0xB3, 0x4C, 0x48, 0x41, 0x38, 0xFD, 0xEB, 0xB0}},
     SystemLocale::className(),
     OroSharing::shared,
     oroMake<SystemLocale>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"text", kComponentId, kClasses};
