#include "gui/apps/main/builtinservices.h"

#include "base/basic/gendatastore.h"
#include "framework/kelregistry.h"
#include "gui/apps/main/appglobals.h"
#include "interfaces/IBucketMemoryPool.h"
#include "interfaces/IFileUtil.h"
#include "interfaces/IHelpService.h"
#include "interfaces/IImageStore.h"
#include "interfaces/IOroCustomTranslatorRegistry.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroHeapMemoryUsage.h"
#include "interfaces/IOroNetworkService.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "interfaces/IProductInfo.h"
#include "orobasictypes/heapmemoryusage.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/sptr.h"
#include "platform/crash.h"
#include "services/errorservice.h"
#include "services/fileutil.h"
#include "services/helpservice.h"
#include "services/kelproductinfo.h"
#include "services/networkservice.h"
#include "services/orodirservice.h"
#include "services/oroimagestore.h"
#include "services/orotranslatorservice.h"
#include "services/oroxlifftranslator.h"
#include "services/translator.h"

namespace {

IOroUnknown* makeRegistry() { return new KelRegistry(); }

IOroUnknown* productInfo() { return getProductInfo(); }

IOroUnknown* settingsStore() { return getGenDataStore(); }

IOroUnknown* makeImageStore() { return new OroImageStore(); }

IOroUnknown* makeTranslatorService() { return new OroTranslatorService(OroXLIFFTranslator::make); }

// The object of the row above, seen in its other role.
IOroUnknown* publishedTranslatorService() { return SPtr<IOroTranslatorService>().get(); }

IOroUnknown* helpService() { return getHelpService(); }

IOroUnknown* makeTranslator() { return new Translator(); }

IOroUnknown* processPool() { return kelPoolInstance(); }

// Never destroyed, whoever drops what references.
IOroUnknown* heapMemoryUsage() {
  static auto* const usage = [] {
    auto* const made = new HeapMemoryUsage<>;
    made->addRef();
    return made;
  }();
  return usage;
}

IOroUnknown* makeFileUtil() { return new FileUtil(); }

IOroUnknown* makeErrorService() {
  return new ErrorService(true,
                          reinterpret_cast<platform::CrashHandler>(oroAppGlobals().errorHandler));
}

IOroUnknown* makeDirService() { return new OroDirService(); }

IOroUnknown* makeNetworkService() { return new NetworkService(); }

struct BuiltInService {
  const char* name;
  IOroUnknown* (*object)();
};

constexpr BuiltInService kBuiltInServices[] = {
    {Velmora::IOroRegistry::interfaceName(), makeRegistry},
    {IProductInfo::interfaceName(), productInfo},
    {IDataStore::interfaceName(), settingsStore},
    {IImageStore::interfaceName(), makeImageStore},
    {IOroTranslatorService::interfaceName(), makeTranslatorService},
    {IOroCustomTranslatorRegistry::interfaceName(), publishedTranslatorService},
    {IHelpService::interfaceName(), helpService},
    {IBucketMemoryPool::interfaceName(), processPool},
    {IOroTranslator::interfaceName(), makeTranslator},
    {IFileUtil::interfaceName(), makeFileUtil},
    {IOroHeapMemoryUsage::interfaceName(), heapMemoryUsage},
    {IOroErrorService::interfaceName(), makeErrorService},
    {IOroDirService::interfaceName(), makeDirService},
    {IOroNetworkService::interfaceName(), makeNetworkService},
};

}  // namespace

void registerBuiltInServices(IOroObjBroker& broker) {
  for (const BuiltInService& service : kBuiltInServices) {
    broker.registerService(KelCString::borrow(service.name), service.object());
  }
}
