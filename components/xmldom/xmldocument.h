// XmlDocument: an XML document in memory, on pugixml.
//
// It reads UTF-8, and UTF-16 with a mark in front. Character data stay as they stand in the file,
// line ends included. No entity but the five of XML and character references is resolved, and no
// other file is opened. Comments, instructions and the document type are passed over and not saved.
// Owns its elements and iterators. One thread at a time.
#pragma once

#include <pugixml.hpp>

#include "components/xmldom/xmlelement.h"
#include "components/xmldom/xmlelementitr.h"
#include "components/xmldom/xmlerror.h"
#include "components/xmldom/xmlslab.h"
#include "components/xmldom/xmlsource.h"
#include "interfaces/IOroDOMXmlV2.h"
#include "orobasictypes/iptr.h"

class XmlDocument : public IOroDOMXmlV2 {
 public:
  static constexpr const char* className() { return "XmlDocument"; }
  using Offers = OroOffers<XmlDocument, IOroDOMXml, IOroDOMXmlV2>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool parse(const OroString& text) override;
  bool load(const OroPath& path) override;
  bool save(const OroPath& path) override;
  IOroDOMXmlElement* root() override { return root_; }
  IOroDOMXmlElement* createElement(const char* name) override;
  bool setRoot(IOroDOMXmlElement* element) override;
  IOroDOMXmlError* lastError() override { return error_.get(); }

  // For its elements.
  XmlElement* elementFor(pugi::xml_node node) { return elements_.make(*this, node); }
  IOroDOMXmlElementItr* newIterator(XmlElement* first) { return iterators_.make(first); }
  // The element, if it is of this document and has no place in it yet; else null.
  XmlElement* orphan(IOroDOMXmlElement* element) const;

 private:
  // Where a document comes from: one of the two.
  struct Origin {
    const OroPath* path;
    const OroString* text;
  };
  // What is wrong with a text, and where; `text` is null when nothing is.
  struct Problem {
    const char* text;
    size_t offset;
  };

  static const char* fill(XmlSource& source, const Origin& origin);
  bool read(const Origin& origin);
  Problem parseSource();
  Problem findRoot();
  void clear();
  bool fail(const char* key, const Origin& origin);
  bool failAt(const Problem& problem, const Origin& origin);

  XmlSource source_;
  pugi::xml_document tree_;  // points into source_
  XmlSlab<XmlElement> elements_;
  XmlSlab<XmlElementItr> iterators_;
  XmlElement* root_ = nullptr;
  IPtr<XmlError> error_;  // null after a success
};
