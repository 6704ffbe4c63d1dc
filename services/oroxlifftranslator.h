// OroXLIFFTranslator: the translator of a component that has an XLIFF file for each language.
//
//   IOroTranslator* translator = service->createTranslator(KelCString::borrow("XLIFF"),
//   componentId);
//   oroQuery<IOroExternalTranslator>(translator)->setBaseName(oroDirPath("language").joined("points"));
//   translator->setLanguage(service->getLanguageId());
//
// The file of German is "points_de", without an extension. It is read at the first text, once:
// later changes of name or language are not seen, and a first text before the language is known
// leaves the component untranslated. Every code with "en" in it counts as English, which needs no
// file. What the file does not have is asked of the service "IOroTranslator". No lock: main thread
// at the first text.
#pragma once

#include "interfaces/IOroExternalTranslator.h"
#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroTranslator.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "services/translationtable.h"

class IOroDOMXmlElement;

class OroXLIFFTranslator : public OroTrivialTranslator<>, public IOroExternalTranslator {
 public:
  static constexpr const char* className() { return "OroXLIFFTranslator"; }
  using Offers = OroOffers<OroXLIFFTranslator, IOroTranslator, IOroExternalTranslator>;

  // A new one, for OroTranslatorService.
  static IOroTranslator* make() { return new OroXLIFFTranslator; }

  // Takes the service "IOroLanguageID" and sets the code of `language` on it. Both may be absent.
  // Returns true.
  bool setLanguage(IOroLanguageID* language) override;
  bool setBaseName(const OroPath& path) override;
  // Always true: without a text the key is the text.
  bool lookup(const char* key, OroString& out) override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  void load();
  void readFile(IOroDOMXmlElement* file);
  void readBody(IOroDOMXmlElement* body);
  void readUnit(IOroDOMXmlElement* unit);

  TranslationTable entries_;
  OroPath baseName_;                    // less "_" and the language
  IPtr<IOroLanguageID> language_;       // null until a language is set
  IOroTranslator* fallback_ = nullptr;  // borrowed from the broker, which keeps its services
  bool loaded_ = false;                 // the one attempt was made
};
