// XmlWorld: a process with the staged library "xmldom", as the application description names it.
//
//   IPtr<IOroDOMXml> document = newDocument();
//   ASSERT_TRUE(document->parse(OroString("<a/>")));
//
// Everything goes through the interfaces, and the documents come out of the library itself.
#pragma once

#include <filesystem>
#include <string>

#include "interfaces/IOroDOMXml.h"
#include "interfaces/IOroDOMXmlElement.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "interfaces/IOroDOMXmlError.h"
#include "interfaces/IOroDOMXmlV2.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "tests/framework/managerfixture.h"
#include "tests/tempfolder.h"

namespace tests {

class XmlWorld : public ManagerFixture {
 protected:
  XmlWorld();
  ~XmlWorld() override { keepForGood(); }  // the library keeps its translator

  static IPtr<IOroDOMXml> newDocument() { return SPtr<IOroDOMXml>(); }
  // A document that was read from the text; fails the test when it is refused.
  static IPtr<IOroDOMXml> documentOf(const std::string& text);

  // Of a name in the test's folder.
  OroPath path(const std::string& name) const;
  // What stands in the file after the document was saved to it.
  std::string saved(IOroDOMXml& document) const;

  TempFolder folder_;
};

// The message of the last failure in UTF-8; empty where there is none.
std::string errorOf(IOroDOMXml& document);
std::u16string textOf(const IOroDOMXmlElement& element);
IOroDOMXmlElement* firstChild(IOroDOMXmlElement& element);

// The element as one line, for comparing: tag(name=value;){text}[children]. Not for deep trees.
std::string shown(IOroDOMXmlElement& element);

}  // namespace tests
