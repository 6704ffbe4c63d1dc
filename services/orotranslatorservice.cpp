#include "services/orotranslatorservice.h"

#include <cstring>
#include <string_view>

#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorFactory.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"
#include "services/registryvalue.h"

namespace {

constexpr uint32_t kBuckets = 17;

// A translator of the class that the registry names for the kind, or null.
IOroTranslator* newRegisteredTranslator(const KelCString& kind) {
  KelCString key("TRANSLATORS/");
  key.append(kind.text());
  const KelCString* const value = oroRegistryValue(key);
  GUID classId;
  if (value == nullptr || !oroParseGuid(value->text(), classId)) return nullptr;
  void* found = nullptr;
  oroCreateObject(classId, KelCString::borrow(IOroTranslator::interfaceName()), &found);
  return static_cast<IOroTranslator*>(found);
}

}  // namespace

OroTranslatorService::OroTranslatorService(Maker xliffMaker)
    : translators_(OroHashTable<GUID, IOroTranslator*>::withBuckets(kBuckets)),
      customFactories_(OroHashTable<KelCString, IOroTranslatorFactory*>::withBuckets(kBuckets)),
      xliffMaker_(xliffMaker) {}

OroTranslatorService::~OroTranslatorService() {
  for (auto& entry : translators_) entry.value->release();
  for (auto& entry : customFactories_) entry.value->release();
}

IOroTranslator* OroTranslatorService::createTranslator(const KelCString& kind,
                                                       const GUID& componentId) {
  if (IOroTranslator* const known = getTranslator(componentId)) return known;
  IOroTranslator* const made = newTranslator(kind);
  if (made == nullptr) return nullptr;
  made->addRef();
  translators_.insert(componentId, made);
  return made;
}

IOroTranslator* OroTranslatorService::newTranslator(const KelCString& kind) {
  if (xliffMaker_ != nullptr && kind.equals("XLIFF")) return xliffMaker_();
  if (const auto* entry = customFactories_.find(kind)) return entry->value->newTranslator();
  return newRegisteredTranslator(kind);
}

IOroTranslator* OroTranslatorService::getTranslator(const GUID& componentId) {
  const auto* entry = translators_.find(componentId);
  return entry != nullptr ? entry->value : nullptr;
}

void OroTranslatorService::listTranslators(OroArray<GUID>& out) {
  out.setCount(0);
  for (const auto& entry : translators_) out.add(entry.key);
}

OroString& OroTranslatorService::translateText(OroString& out, const char* text) {
  if (text != nullptr) return translateQualified(out, text);
  out = OroString(OroString::empty());
  return out;
}

OroString& OroTranslatorService::translateQualified(OroString& out, const char* key) {
  const char* const bar = key != nullptr ? std::strchr(key, '|') : nullptr;
  if (bar == nullptr) return oroTranslate(out, key);
  GUID componentId;
  if (oroParseGuid(std::string_view(key, bar - key), componentId)) {
    if (IOroTranslator* const translator = getTranslator(componentId)) {
      return translator->translate(out, bar + 1);
    }
  }
  return oroTranslate(out, bar + 1);
}

void OroTranslatorService::setLanguage(IOroLanguageID* language) {
  SPtr<IOroLanguageID> service;
  if (service) {
    if (language != nullptr) service->setLanguage(language->getLanguage());
    languageId_ = service.get();
  }
  for (auto& entry : translators_) entry.value->setLanguage(languageId_.get());
}

bool OroTranslatorService::registerFactory(const KelCString& kind, IOroTranslatorFactory* factory) {
  uint32_t bucket = 0;
  if (factory == nullptr || customFactories_.find(kind, &bucket) != nullptr) return false;
  factory->addRef();
  customFactories_.insert(bucket, kind, factory);
  return true;
}

bool OroTranslatorService::unregisterFactory(const KelCString& kind) {
  const auto* entry = customFactories_.find(kind);
  if (entry == nullptr) return false;
  IOroTranslatorFactory* const factory = entry->value;
  customFactories_.remove(kind);
  factory->release();
  return true;
}
