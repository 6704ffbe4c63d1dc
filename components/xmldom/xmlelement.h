// XmlElement: an element of an XmlDocument, which owns it.
//
// An element that was read looks into the parsed tree until it is changed; one that was made here
// has all it says in a Record. The objects for the children of a read element are made at the first
// step into it, so a walk costs what it sees. Nothing here recurses: documents may be nested as
// deep as they are long. One thread at a time.
#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "interfaces/IOroDOMXmlElement.h"
#include "orobasictypes/orooffers.h"

class XmlDocument;

class XmlElement : public IOroDOMXmlElement {
 public:
  static constexpr const char* className() { return "XmlElement"; }
  using Offers = OroOffers<XmlElement, IOroDOMXmlElement>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  XmlElement(XmlDocument& document, pugi::xml_node source);  // one that was read
  XmlElement(XmlDocument& document, const char* tag);        // a new one

  const char* tagName() const override;
  const char* attribute(const char* name) const override;
  bool wideAttribute(const char* name, OroString& out) const override;
  bool setAttribute(const char* name, const OroString& value) override;
  void text(OroString& out) const override;
  bool setText(const OroString& text) override;
  IOroDOMXmlElementItr* children() override;
  bool appendChild(IOroDOMXmlElement* child) override;

  XmlDocument& document() const { return document_; }
  XmlElement* parent() const { return parent_; }
  XmlElement* next() const { return next_; }
  XmlElement* firstChild();

  // For the printer. Attributes in their order, values unescaped.
  template <class Visit>
  void eachAttribute(const Visit& visit) const;
  // The character data in front of the first child, or behind that child.
  std::string textBefore() const;
  std::string textBehind(const XmlElement& child) const;
  // Whether blanks between the children would change what the element says.
  bool hasTextToKeep() const;

 private:
  struct Attribute {
    std::string name;
    std::string value;  // UTF-8
  };
  // What was said here rather than read.
  struct Record {
    std::string tag;  // of an element that was not read
    std::vector<Attribute> attributes;
    std::string text;  // UTF-8
    bool hasAttributes = false;
    bool hasText = false;
  };

  Record& record();
  Attribute* ownAttribute(const char* name) const;
  bool holds(const XmlElement& other) const;
  void link(XmlElement* child);

  XmlDocument& document_;
  pugi::xml_node source_;           // null in a new element
  std::unique_ptr<Record> record_;  // null in one that was read and not changed
  XmlElement* parent_ = nullptr;    // null without one, and in the root
  XmlElement* next_ = nullptr;      // the next sibling
  XmlElement* first_ = nullptr;     // the children, once they were asked for
  XmlElement* last_ = nullptr;
  bool expanded_;  // first_ and last_ hold
};

template <class Visit>
void XmlElement::eachAttribute(const Visit& visit) const {
  if (record_ != nullptr && record_->hasAttributes) {
    for (const Attribute& each : record_->attributes) visit(each.name.c_str(), each.value);
  } else {
    for (const pugi::xml_attribute& each : source_.attributes()) {
      visit(each.name(), std::string_view(each.value()));
    }
  }
}
