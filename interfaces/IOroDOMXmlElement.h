// IOroDOMXmlElement: one element of an XML document, with its attributes, text and child elements.
//
// Owned by its document and alive as long as that; nobody releases one. Names are ASCII. Whoever
// uses the document, on one thread at a time, uses its elements.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroDOMXmlElementItr;
class OroString;

class IOroDOMXmlElement : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDOMXmlElement"; }

  // Borrowed, never null.
  virtual const char* tagName() const = 0;

  // The value in UTF-8, borrowed until the attribute is set; null when there is none.
  virtual const char* attribute(const char* name) const = 0;
  // The same as wide text. False, and `out` empty, when there is none.
  virtual bool wideAttribute(const char* name, OroString& out) const = 0;
  // Adds the attribute behind the others, or replaces its value. False when nothing was set.
  virtual bool setAttribute(const char* name, const OroString& value) = 0;

  // The character data that stand directly in the element, joined and unchanged, white space
  // included; empty when there are none. A character above U+FFFF is two units.
  virtual void text(OroString& out) const = 0;
  // Replaces the character data; child elements stay. False when nothing was set.
  virtual bool setText(const OroString& text) = 0;

  // A new iterator that stands at the first child element. The document's, as the element is.
  virtual IOroDOMXmlElementItr* children() = 0;
  // Behind the last child. False, and nothing done, for null, an element of another document and
  // one that has a parent or is the root.
  virtual bool appendChild(IOroDOMXmlElement* child) = 0;
};
