// IOroDOMXmlV2: the name under which the reader of translation tables asks for an XML document. It
// adds nothing; one class answers both names.
#pragma once

#include "interfaces/IOroDOMXml.h"

class IOroDOMXmlV2 : public IOroDOMXml {
 public:
  static constexpr const char* interfaceName() { return "IOroDOMXmlV2"; }
};
