#include "components/kit/orocomponentbase.h"

#include "interfaces/IOroExternalTranslator.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"

namespace {

// No exception may leave the library: a class that cannot be made is a failure like any other.
IOroUnknown* makeObject(const OroClassEntry& entry) {
  try {
    return entry.make();
  } catch (...) {
    return nullptr;
  }
}

// Gives the module a translator of its own, before its first text. A language that is chosen later
// reaches it through the service.
void readTranslations(const OroComponentRecord& record) {
  const SPtr<IOroTranslatorService> service;
  if (!service) return;
  IOroTranslator* const translator =
      service->createTranslator(KelCString::borrow("XLIFF"), record.id);
  auto* const files = oroQuery<IOroExternalTranslator>(translator);
  if (files == nullptr) return;
  files->setBaseName(oroDirPath("language").joined(record.translations));
  IOroLanguageID* const language = service->getLanguageId();
  if (language != nullptr) translator->setLanguage(language);
}

}  // namespace

OroComponentBase::OroComponentBase(const OroComponentRecord& record)
    : record_(record), shared_(record.classes.size()) {}

// What the module's strings keep for reuse can be freed by the module alone, so it goes first.
OroComponentBase::~OroComponentBase() {
  shared_.clear();
  if (ownModule_) kelPoolShutdown();
}

void OroComponentBase::initialise(IOroObjBroker* broker) {
  OroComponentIdentity& identity = oroModuleIdentity();
  // A library that is loaded for two groups has two components in one module.
  ownModule_ = oroBroker() == nullptr || identity.componentId == record_.id;
  if (ownModule_) {
    oroSetBroker(broker);
    identity.componentName = KelCString::borrow(record_.name);
    identity.componentId = record_.id;
    if (record_.translations != nullptr) readTranslations(record_);
  }
  running_ = true;
  if (record_.started != nullptr) record_.started();
}

void OroComponentBase::shutDown() {
  if (!running_) return;
  running_ = false;
  if (record_.stopping != nullptr) record_.stopping();
}

int32_t OroComponentBase::getClassObject(const GUID& classId, IOroUnknown** out) {
  if (out == nullptr) return 0;
  *out = nullptr;
  for (size_t row = 0; row < record_.classes.size(); ++row) {
    const OroClassEntry& entry = record_.classes[row];
    if (entry.id != classId) continue;
    *out = entry.sharing == OroSharing::shared ? sharedObject(row) : makeObject(entry);
    return *out != nullptr ? static_cast<int32_t>(entry.sharing) : 0;
  }
  return 0;
}

IOroUnknown* OroComponentBase::sharedObject(size_t row) {
  if (!shared_[row]) shared_[row] = makeObject(record_.classes[row]);
  return shared_[row].get();
}

void OroComponentBase::setGroupName(const KelCString& name) {
  // A copy of its own: a literal of another library may go with it.
  if (ownModule_) oroModuleIdentity().groupName = KelCString(name.text());
}
