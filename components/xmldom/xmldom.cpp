// The library "xmldom": XML documents.

#include "components/kit/orocomponentrecord.h"
#include "components/xmldom/xmldocument.h"

namespace {

constexpr GUID kComponentId = {
    0x0B7C6A0E, 0x3D7F, 0x4E58, {0x91, 0x4A, 0xD2, 0x6B, 0x80, 0x1F, 0x5C, 0x37}};

constexpr OroClassEntry kClasses[] = {
    {{0xE41F9B52, 0x77A0, 0x4C1D, {0xB8, 0x06, 0x3F, 0x95, 0x2C, 0xDA, 0x14, 0x6E}},
     XmlDocument::className(),
     OroSharing::eachNew,
     oroMake<XmlDocument>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"xmldom", kComponentId, kClasses};
