// Translator: the application's own translator, with the texts of the host and of every component
// that has no translator of its own. Published as "IOroTranslator".
//
// Its texts stand in the directory named "language", in "velmora.de.resx" or else in "de.po" for
// German. A further language adds to the texts that are there and replaces those that it has too.
// A text that is missing is its key, and a file that is missing is no error. No lock: the language
// is set on the main thread during the start.
#pragma once

#include "interfaces/IOroTranslator.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "services/translationtable.h"

class OroPath;

class Translator : public OroTrivialTranslator<> {
 public:
  static constexpr const char* className() { return "Translator"; }
  using Offers = OroOffersOver<Translator, OroTrivialTranslator, IOroTranslator>;

  // Always true: without a text the key is the text.
  bool lookup(const char* key, OroString& out) override;
  // Reads the file of the language. False when there is none or it could not be read whole; what
  // could be read counts.
  bool setLanguage(IOroLanguageID* language) override;
  // The same with the files beside `path` that have its name and the extension "resx", else "po".
  bool load(const OroPath& path);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  bool loadEither(const OroPath& resx, const OroPath& po);
  bool readResx(const OroPath& path);
  bool readPo(const OroPath& path);
  void storeEscaped(const OroString& key, const OroString& value);

  TranslationTable entries_;
};
