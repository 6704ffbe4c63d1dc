// IOroDOMXml: an XML document in memory. Offered by a component library; the settings document and
// the translations are read and written through it.
//
//   SPtr<IOroDOMXml> document;
//   if (document && document->load(path)) use(document->root());
//
// Each request for the service gives a new, empty document, since callers use two at a time; its
// component therefore answers that its objects are not shared. One thread at a time. The document
// owns its elements and iterators.
//
// A document has exactly one root. Reading follows no external entity, keeps character data as they
// are, and is safe for any input. What fails leaves the document empty and an error behind.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroDOMXmlElement;
class IOroDOMXmlError;
class OroPath;
class OroString;

class IOroDOMXml : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDOMXml"; }

  // Replaces the document; elements handed out before are gone. False when the text is no
  // well-formed document, has no root or more than one. An encoding that a declaration in the text
  // names is not looked at.
  virtual bool parse(const OroString& text) = 0;
  // The same with the bytes of a file: UTF-8, or UTF-16 with a byte order mark. False also when it
  // cannot be read.
  virtual bool load(const OroPath& path) = 0;
  // Writes the document in UTF-8 with a declaration, through a temporary file in the same folder,
  // so that the old file stands whole until the new one does. False when the file was not replaced.
  virtual bool save(const OroPath& path) = 0;

  // Null while there is none.
  virtual IOroDOMXmlElement* root() = 0;
  // A new element without parent, this document's. Null when the name is no XML name.
  virtual IOroDOMXmlElement* createElement(const char* name) = 0;
  // Makes an element without parent the root in place of the old one. False for null and for an
  // element of another document or with a parent.
  virtual bool setRoot(IOroDOMXmlElement* element) = 0;

  // Of the last parse, load or save; null when that succeeded. The document's, until the next one.
  virtual IOroDOMXmlError* lastError() = 0;
};
