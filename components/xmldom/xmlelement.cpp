#include "components/xmldom/xmlelement.h"

#include <cstring>
#include <new>

#include "components/xmldom/xmldocument.h"
#include "components/xmldom/xmltext.h"
#include "orobasictypes/orostring.h"

namespace {

bool isText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool isElement(pugi::xml_node node) { return node.type() == pugi::node_element; }

// The character data from `node` to the next element.
std::string textFrom(pugi::xml_node node) {
  std::string text;
  for (; node && !isElement(node); node = node.next_sibling()) {
    if (isText(node)) text += node.value();
  }
  return text;
}

bool isBlank(const char* text) { return text[std::strspn(text, " \t\r\n")] == '\0'; }

}  // namespace

XmlElement::XmlElement(XmlDocument& document, pugi::xml_node source)
    : document_(document), source_(source), expanded_(false) {}

XmlElement::XmlElement(XmlDocument& document, const char* tag)
    : document_(document), record_(new Record), expanded_(true) {
  record_->tag = tag;
  record_->hasAttributes = true;
  record_->hasText = true;
}

XmlElement::Record& XmlElement::record() {
  if (record_ == nullptr) record_.reset(new Record);
  return *record_;
}

const char* XmlElement::tagName() const { return source_ ? source_.name() : record_->tag.c_str(); }

XmlElement::Attribute* XmlElement::ownAttribute(const char* name) const {
  for (Attribute& each : record_->attributes) {
    if (each.name == name) return &each;
  }
  return nullptr;
}

const char* XmlElement::attribute(const char* name) const {
  if (name == nullptr) return nullptr;
  if (record_ != nullptr && record_->hasAttributes) {
    const Attribute* const own = ownAttribute(name);
    return own != nullptr ? own->value.c_str() : nullptr;
  }
  const pugi::xml_attribute found = source_.attribute(name);
  return found ? found.value() : nullptr;
}

bool XmlElement::wideAttribute(const char* name, OroString& out) const try {
  const char* const value = attribute(name);
  xmltext::decode(value != nullptr ? value : "", out);
  return value != nullptr;
} catch (const std::bad_alloc&) {
  out = OroString::empty();
  return false;
}

bool XmlElement::setAttribute(const char* name, const OroString& value) try {
  if (!xmltext::isName(name)) return false;
  std::string bytes = xmltext::encode(value);
  if (!record().hasAttributes) {
    eachAttribute([this](const char* readName, std::string_view readValue) {
      if (ownAttribute(readName) == nullptr) {
        record_->attributes.push_back({readName, std::string(readValue)});
      }
    });
    record_->hasAttributes = true;
  }
  if (Attribute* const own = ownAttribute(name)) {
    own->value.swap(bytes);
  } else {
    record_->attributes.push_back({name, std::move(bytes)});
  }
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

void XmlElement::text(OroString& out) const try {
  if (record_ != nullptr && record_->hasText) return xmltext::decode(record_->text, out);
  const char* only = "";
  std::string joined;
  for (const pugi::xml_node node : source_.children()) {
    if (!isText(node)) continue;
    if (*only != '\0' && joined.empty()) joined = only;
    if (!joined.empty()) joined += node.value();
    only = node.value();
  }
  xmltext::decode(joined.empty() ? std::string_view(only) : joined, out);
} catch (const std::bad_alloc&) {
  out = OroString::empty();
}

bool XmlElement::setText(const OroString& text) try {
  std::string bytes = xmltext::encode(text);
  record().text.swap(bytes);
  record_->hasText = true;
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

XmlElement* XmlElement::firstChild() {
  if (!expanded_) {
    expanded_ = true;
    for (const pugi::xml_node node : source_.children()) {
      if (isElement(node)) link(document_.elementFor(node));
    }
  }
  return first_;
}

void XmlElement::link(XmlElement* child) {
  (last_ != nullptr ? last_->next_ : first_) = child;
  last_ = child;
  child->parent_ = this;
}

IOroDOMXmlElementItr* XmlElement::children() { return document_.newIterator(firstChild()); }

bool XmlElement::appendChild(IOroDOMXmlElement* child) {
  XmlElement* const own = document_.orphan(child);
  if (own == nullptr || own->holds(*this)) return false;
  firstChild();  // those that were read stand in front
  link(own);
  return true;
}

// Whether `other` is this element or stands in it. One without children is asked nothing more, so
// that a tree that grows from its root costs no climb for each element.
bool XmlElement::holds(const XmlElement& other) const {
  if (this == &other) return true;
  if (expanded_ && first_ == nullptr) return false;
  const XmlElement* at = &other;
  while (at != nullptr && at != this) at = at->parent_;
  return at == this;
}

std::string XmlElement::textBefore() const {
  if (record_ != nullptr && record_->hasText) return record_->text;
  return textFrom(source_.first_child());
}

std::string XmlElement::textBehind(const XmlElement& child) const {
  const bool read = child.source_ && child.source_.parent() == source_;
  if (!read || (record_ != nullptr && record_->hasText)) return {};
  return textFrom(child.source_.next_sibling());
}

bool XmlElement::hasTextToKeep() const {
  if (record_ != nullptr && record_->hasText) return !record_->text.empty();
  for (const pugi::xml_node node : source_.children()) {
    if (isText(node) && !isBlank(node.value())) return true;
  }
  return false;
}
