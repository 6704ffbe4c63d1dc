// XmlElementItr: the walk over an element's child elements. The document owns it.
#pragma once

#include "components/xmldom/xmlelement.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "orobasictypes/orooffers.h"

class XmlElementItr : public IOroDOMXmlElementItr {
 public:
  static constexpr const char* className() { return "XmlElementItr"; }
  using Offers = OroOffers<XmlElementItr, IOroDOMXmlElementItr>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  explicit XmlElementItr(XmlElement* first) : at_(first) {}

  void advance() override {
    if (at_ != nullptr) at_ = at_->next();
  }
  bool atEnd() const override { return at_ == nullptr; }
  IOroDOMXmlElement* element() const override { return at_; }

 private:
  XmlElement* at_;  // null at the end
};
