// KelDataXMLWriter: writes changed items of a store as lines of the settings journal, and the whole
// document when it commits.
//
// An item is written when its value differs from layer 1, which stands for the file, and layer 1
// follows. The file is open between Begin and End alone. What could not be written is remembered
// and saved by the commit. A writer of a document of its own appends to the document itself and
// writes all persistent items; only its commit makes a document of that.
#pragma once

#include <string>
#include <string_view>

#include "base/basic/keldataxmlfile.h"
#include "base/basic/kelsettingsjournal.h"
#include "orobasictypes/oroarray.h"

class KelDataXMLWriter final : public KelDataXMLFile {
 public:
  static constexpr const char* className() { return "KelDataXMLWriter"; }
  using Offers = OroOffersOver<KelDataXMLWriter, KelDataXMLFile>;

  // The writer of the default document.
  KelDataXMLWriter();
  // The writer of a document of its own.
  explicit KelDataXMLWriter(const OroString& path);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // True too when there is nowhere to write to.
  bool Begin() override;
  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;
  bool End() override;

  // Notes the value and appends its line, unless the value is what was noted last.
  void WriteValue(const char* path, const OroString& type, const OroString& text);

 private:
  // Writes what `format` makes of the item.
  template <class Item, class Format>
  bool visit(Item* typed, const OroString& type, const Format& format);
  void splitPath(const char* path);
  void assembleLine(const OroString& type, const OroString& text);

  std::string line_;
  OroArray<std::string_view> segments_;  // of the path being written, which they lie in
  KelSettingsJournal journal_;
};
