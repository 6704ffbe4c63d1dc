// OroTranslatorService: the translators of the process, by the component that they belong to.
//
// One object answers for IOroTranslatorService, IOroInternalLanguageService and
// IOroCustomTranslatorRegistry. The application main makes and publishes it; it holds one reference
// on each translator and factory. Main thread only.
#pragma once

#include <cstdint>

#include "interfaces/IOroCustomTranslatorRegistry.h"
#include "interfaces/IOroInternalLanguageService.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"

class OroTranslatorService : public IOroTranslatorService,
                             public IOroInternalLanguageService,
                             public IOroCustomTranslatorRegistry {
 public:
  static constexpr const char* className() { return "OroTranslatorService"; }

  // Makes a new translator with a count of 0, or null.
  using Maker = IOroTranslator* (*)();

  // `xliffMaker` makes the translators of the kind "XLIFF"; null in a host that reads no such
  // files, for which it is a kind like any other.
  explicit OroTranslatorService(Maker xliffMaker = nullptr);
  ~OroTranslatorService() override;
  OroTranslatorService(const OroTranslatorService&) = delete;
  OroTranslatorService& operator=(const OroTranslatorService&) = delete;

  IOroTranslator* createTranslator(const KelCString& kind, const GUID& componentId) override;
  IOroTranslator* getTranslator(const GUID& componentId) override;
  IOroLanguageID* getLanguageId() override { return languageId_.get(); }
  void listTranslators(OroArray<GUID>& out) override;
  OroString& translateText(OroString& out, const char* text) override;
  OroString& translateQualified(OroString& out, const char* key) override;

  void setLanguage(IOroLanguageID* language) override;

  bool registerFactory(const KelCString& kind, IOroTranslatorFactory* factory) override;
  bool unregisterFactory(const KelCString& kind) override;

  using Offers = OroOffers<OroTranslatorService, IOroTranslatorService, IOroInternalLanguageService,
                           IOroCustomTranslatorRegistry>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  IOroTranslator* newTranslator(const KelCString& kind);

  OroHashTable<GUID, IOroTranslator*> translators_;                   // one reference each
  OroHashTable<KelCString, IOroTranslatorFactory*> customFactories_;  // one reference each
  IPtr<IOroLanguageID> languageId_;                                   // the language now in force
  const Maker xliffMaker_;
};
