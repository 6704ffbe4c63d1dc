#include "tests/components/xmlworld.h"

#include "tests/components/describedid.h"
#include "tests/testpaths.h"

namespace tests {

XmlWorld::XmlWorld() {
  const GUID component = describedId("component xmldom ");
  const GUID documents = describedId("class XmlDocument ");
  manager_->registerComponent(wideTextOf(stageDir() / "xmldom"), component, KelCString("xmldom"),
                              KelCString());
  broker_->registerClass(documents, component, {}, KelCString("XmlDocument"));
  broker_->registerInterface(KelCString("IOroDOMXml"), documents);
  broker_->registerInterface(KelCString("IOroDOMXmlV2"), documents);
}

IPtr<IOroDOMXml> XmlWorld::documentOf(const std::string& text) {
  IPtr<IOroDOMXml> document = newDocument();
  EXPECT_TRUE(document->parse(OroString::fromUtf8(text.c_str()))) << errorOf(*document);
  return document;
}

OroPath XmlWorld::path(const std::string& name) const {
  return OroPath(wideTextOf(folder_.file(name)));
}

std::string XmlWorld::saved(IOroDOMXml& document) const {
  EXPECT_TRUE(document.save(path("saved.xml"))) << errorOf(document);
  return folder_.read("saved.xml");
}

std::string errorOf(IOroDOMXml& document) {
  OroString text;
  if (IOroDOMXmlError* const error = document.lastError()) error->text(text);
  return text.toUtf8();
}

std::u16string textOf(const IOroDOMXmlElement& element) {
  OroString text;
  element.text(text);
  return text.wideText();
}

IOroDOMXmlElement* firstChild(IOroDOMXmlElement& element) { return element.children()->element(); }

std::string shown(IOroDOMXmlElement& element) {
  std::string line = element.tagName();
  for (const char* const name : {"name", "type"}) {
    if (const char* const value = element.attribute(name)) {
      line += std::string("(") + name + "=" + value + ")";
    }
  }
  OroString text;
  element.text(text);
  if (!text.isEmpty()) line += std::string("{") + text.toUtf8() + "}";
  for (auto* child = element.children(); !child->atEnd(); child->advance()) {
    line += "[" + shown(*child->element()) + "]";
  }
  return line;
}

}  // namespace tests
