// IOroDOMXmlElementItr: walks the child elements of an element, in document order.
//
//   for (IOroDOMXmlElementItr* child = parent->children(); !child->atEnd(); child->advance())
//     use(child->element());
//
// Owned by the document and alive as long as that. Text, comments and the like between the elements
// are passed over. The parent must not get children meanwhile.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroDOMXmlElement;

class IOroDOMXmlElementItr : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDOMXmlElementItr"; }

  // To the next child; nothing at the end.
  virtual void advance() = 0;
  virtual bool atEnd() const = 0;
  // The child, the document's; null at the end.
  virtual IOroDOMXmlElement* element() const = 0;
};
