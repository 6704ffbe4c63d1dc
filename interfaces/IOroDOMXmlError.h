// IOroDOMXmlError: why a document could not be read or saved.
#pragma once

#include "orobasictypes/iorounknown.h"

class OroString;

class IOroDOMXmlError : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDOMXmlError"; }

  // The message for a person; of a text that cannot be parsed, with line and column.
  virtual void text(OroString& out) const = 0;
};
