#include "gui/apps/main/builtinservices.h"

#include "base/basic/gendatastore.h"
#include "framework/kelregistry.h"
#include "gui/apps/main/appglobals.h"
#include "interfaces/IOroCustomTranslatorRegistry.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/sptr.h"
#include "platform/crash.h"
#include "services/errorservice.h"
#include "services/orodirservice.h"
#include "services/orotranslatorservice.h"

namespace {

IOroUnknown* makeRegistry() { return new KelRegistry(); }

IOroUnknown* settingsStore() { return getGenDataStore(); }

IOroUnknown* makeTranslatorService() { return new OroTranslatorService(); }

// The object of the row above, seen in its other role.
IOroUnknown* publishedTranslatorService() { return SPtr<IOroTranslatorService>().get(); }

IOroUnknown* makeErrorService() {
  return new ErrorService(true,
                          reinterpret_cast<platform::CrashHandler>(oroAppGlobals().errorHandler));
}

IOroUnknown* makeDirService() { return new OroDirService(); }

struct BuiltInService {
  const char* name;
  IOroUnknown* (*object)();
};

constexpr BuiltInService kBuiltInServices[] = {
    {Velmora::IOroRegistry::interfaceName(), makeRegistry},
    {IDataStore::interfaceName(), settingsStore},
    {IOroTranslatorService::interfaceName(), makeTranslatorService},
    {IOroCustomTranslatorRegistry::interfaceName(), publishedTranslatorService},
    {IOroErrorService::interfaceName(), makeErrorService},
    {IOroDirService::interfaceName(), makeDirService},
};

}  // namespace

void registerBuiltInServices(IOroObjBroker& broker) {
  for (const BuiltInService& service : kBuiltInServices) {
    broker.registerService(KelCString::borrow(service.name), service.object());
  }
}
