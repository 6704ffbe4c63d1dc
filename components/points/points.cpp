// The library "points": the document of point clouds, its files and its commands.

#include "components/kit/orocomponentrecord.h"
#include "components/points/pointapplication.h"
#include "components/points/pointarrayfactory.h"
#include "components/points/pointclouds.h"
#include "components/points/pointcommandaccess.h"
#include "components/points/pointcommands.h"
#include "components/points/pointdocument.h"
#include "components/points/pointextrainfo.h"
#include "components/points/pointfiletypes.h"
#include "components/points/pointopener.h"
#include "components/points/pointprimitives.h"
#include "components/points/pointsavedata.h"
#include "components/points/pointsaver.h"

namespace {

constexpr GUID kComponentId = {
    0x59BA1B0D, 0x5C90, 0x4158, {0xA9, 0x09, 0x40, 0x6C, 0x2E, 0x41, 0x67, 0x88}};

constexpr OroClassEntry kClasses[] = {
    {{0x5D32FE61, 0x985F, 0x44E7, {0xAA, 0x09, 0x5E, 0xE8, 0x2B, 0xB2, 0x99, 0x76}},
     PointDocument::className(),
     OroSharing::shared,
     oroMake<PointDocument>},
    {{0x9A1E40B4, 0x5815, 0x4A99, {0x99, 0xE2, 0xD1, 0x53, 0x64, 0xC7, 0xA5, 0x00}},
     PointOpener::className(),
     OroSharing::eachNew,
     oroMake<PointOpener>},
    {{0x68B4AEF7, 0x3EAA, 0x4E17, {0x9D, 0x8A, 0x4E, 0xAC, 0xE6, 0x93, 0xAE, 0x2D}},
     PointSaver::className(),
     OroSharing::eachNew,
     oroMake<PointSaver>},
    {{0x142C8364, 0x7806, 0x4577, {0x93, 0xE7, 0x83, 0xE7, 0xEB, 0x04, 0xB3, 0x9B}},
     PointSaveData::className(),
     OroSharing::eachNew,
     oroMake<PointSaveData>},
    {{0x3B041641, 0x1788, 0x44F2, {0xA6, 0x0D, 0xF2, 0x54, 0x53, 0xFE, 0x2E, 0x85}},
     PointFileTypes::className(),
     OroSharing::shared,
     oroMake<PointFileTypes>},
    {{0x00A154D8, 0x5ED8, 0x4BCC, {0xB5, 0xC7, 0x19, 0xC2, 0xAD, 0xD9, 0xCA, 0x88}},
     PointCommands::className(),
     OroSharing::shared,
     oroMake<PointCommands>},
    {{0x6F27C8D4, 0x30BE, 0x4A95, {0xB1, 0x7D, 0x28, 0xE0, 0x94, 0x5B, 0xC3, 0x6A}},
     PointClouds::className(),
     OroSharing::shared,
     oroMake<PointClouds>},
    {{0xC0290103, 0x855D, 0x4F55, {0x99, 0xEC, 0x87, 0x12, 0xE8, 0xE3, 0x57, 0x4F}},
     PointCommandAccess::className(),
     OroSharing::shared,
     oroMake<PointCommandAccess>},
    {{0x6E704245, 0xA4FF, 0x41E3, {0xA7, 0x94, 0x9B, 0x80, 0xDC, 0xB0, 0xB8, 0x2E}},
     PointPrimitives::className(),
     OroSharing::shared,
     oroMake<PointPrimitives>},
    {{0xDE1B1471, 0x320A, 0x48EA, {0xB7, 0xA7, 0x88, 0xD1, 0x06, 0x76, 0x28, 0x32}},
     PointApplication::className(),
     OroSharing::shared,
     oroMake<PointApplication>},
    {{0x51F0C9D6, 0x7B3E, 0x4E82, {0xB1, 0x4D, 0x2A, 0x96, 0xC7, 0x05, 0xE8, 0x3F}},
     PointExtraInfo::className(),
     OroSharing::eachNew,
     oroMake<PointExtraInfo>},
    {{0xA7D2583B, 0x0C64, 0x49F1, {0x86, 0xEA, 0x73, 0x1F, 0xB9, 0x50, 0x2D, 0xC4}},
     PointArrayFactory::className(),
     OroSharing::shared,
     oroMake<PointArrayFactory>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{
    .name = "points", .id = kComponentId, .classes = kClasses, .translations = "points"};
