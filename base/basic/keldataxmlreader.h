// KelDataXMLReader: reads the values of a settings document into the declared items of a store.
//
// With `notify` the receivers of an item hear of the value; without it the value is set silently
// and also becomes that of layer 1, which stands for the file. An item takes the text for its own
// kind, whatever type the document names. A value that is missing or cannot be read leaves the item
// as it is and fails the walk.
#pragma once

#include "base/basic/keldataxmlfile.h"

class KelDataXMLReader final : public KelDataXMLFile {
 public:
  static constexpr const char* className() { return "KelDataXMLReader"; }
  using Offers = OroOffersOver<KelDataXMLReader, KelDataXMLFile>;

  // An empty path stands for the default one.
  KelDataXMLReader(const OroString& path, bool notify);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Of missing data nothing is told.
  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  // An empty text counts as missing.
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;

 private:
  // Gives the text to `read`, which is false for one that it cannot use.
  template <class Item, class Read>
  bool visit(Item* typed, const Read& read);
  template <class Item, class... Values>
  void assign(Item& typed, IKelDataItem& item, const Values&... values) const;
  const OroString* textOf(const IKelDataItem& item) const;

  bool notify_;
};
