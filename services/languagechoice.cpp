#include "services/languagechoice.h"

#include "interfaces/IDataStore.h"
#include "interfaces/IKelLocale.h"
#include "interfaces/IOroCompLangInitializer.h"
#include "interfaces/IOroInternalLanguageService.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/sptr.h"
#include "services/registryvalue.h"

namespace {

constexpr const char* kOverride = "Application/Language";
constexpr const char* kDirectory = "Fonts and Languages";
constexpr const char* kSetting = "Fonts and Languages/Language";
constexpr int32_t kLongestCode = 80;
constexpr const char* kEnglish = "en";
constexpr const char* kComponentClasses = "I18N";

// The language as it is stored; false when the settings cannot be read, whatever the default is.
bool readStoredLanguage(KelCString& code) {
  const SPtr<IDataStore> store;
  if (!store) return false;
  store->CreateDirectory(kDirectory);
  store->CreateString(kSetting, kLongestCode, kEnglish, 1);
  if (!store->AcceptPath(store->GetReader(), kSetting)) return false;
  code = KelCString(store->GetString(kSetting, nullptr));
  return true;
}

// The language of the system's user where none was chosen, and English where that is not known.
IPtr<IOroLanguageID> completed(IPtr<IOroLanguageID> language) {
  if (language->getLanguage().isEmpty()) {
    const SPtr<IKelLocale> locale;
    IOroLanguageID* const ofSystem = locale ? locale->systemLanguage() : nullptr;
    if (ofSystem != nullptr) language = ofSystem;
  }
  if (language->getLanguage().isEmpty()) language->setLanguage(KelCString(kEnglish));
  return language;
}

}  // namespace

IPtr<IOroLanguageID> chooseLanguage() {
  const SPtr<IOroLanguageID> language;
  KelCString code;
  if (const KelCString* const chosen = oroRegistryValue(kOverride)) {
    code = *chosen;
  } else if (!readStoredLanguage(code)) {
    return language;
  }
  if (language) language->setLanguage(code);
  return language;
}

void initComponentLanguages(IOroLanguageID* language) {
  for (const OroRegistryEntry& entry : oroRegistryEntries(kComponentClasses)) {
    GUID classId;
    if (!oroParseGuid(entry.value.c_str(), classId)) continue;
    void* found = nullptr;
    oroCreateObject(classId, KelCString::borrow(IOroCompLangInitializer::interfaceName()), &found);
    const IPtr<IOroCompLangInitializer> object(static_cast<IOroCompLangInitializer*>(found));
    if (object) object->initLanguage(language);
  }
}

void firstLanguageStep() {
  const IPtr<IOroLanguageID> chosen = chooseLanguage();
  if (!chosen) return;
  const IPtr<IOroLanguageID> language = completed(chosen);
  const SPtr<IOroTranslator> translator;
  if (translator) translator->setLanguage(language.get());
  initComponentLanguages(language.get());
  const SPtr<IOroTranslatorService> translators;
  auto* const service = oroQuery<IOroInternalLanguageService>(translators.get());
  if (service != nullptr) service->setLanguage(language.get());
}
