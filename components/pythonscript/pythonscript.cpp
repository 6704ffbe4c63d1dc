// The library "pythonscript": scripts in Python.

#include "components/kit/orocomponentrecord.h"
#include "components/pythonscript/pythonengine.h"

namespace {

constexpr GUID kComponentId = {
    0xC7A1D04E, 0x19B6, 0x4E83, {0x8F, 0x25, 0xB3, 0x5E, 0x90, 0x4C, 0x6D, 0x11}};

constexpr OroClassEntry kClasses[] = {
    {{0x4D9E7B30, 0xA25C, 0x46F1, {0x93, 0x0B, 0x1C, 0x88, 0xE7, 0x52, 0x3F, 0xA6}},
     PythonEngine::className(),
     OroSharing::shared,
     oroMake<PythonEngine>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{.name = "pythonscript",
                                            .id = kComponentId,
                                            .classes = kClasses,
                                            .translations = "pythonscript"};
