// XmlError: the message of the last thing that failed in a document.
#pragma once

#include "interfaces/IOroDOMXmlError.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

class XmlError : public IOroDOMXmlError {
 public:
  static constexpr const char* className() { return "XmlError"; }
  using Offers = OroOffers<XmlError, IOroDOMXmlError>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  explicit XmlError(const OroString& text) : text_(text) {}

  void text(OroString& out) const override { out = text_; }

 private:
  OroString text_;
};
