#include "gui/apps/main/oroappmain.h"

#include "base/basic/gendatastore.h"
#include "framework/kelcomponentmanager.h"
#include "framework/oroobjectbroker.h"
#include "gui/apps/cowl/builtincomponent.h"
#include "gui/apps/main/appglobals.h"
#include "gui/apps/main/builtinservices.h"
#include "gui/apps/main/initserver.h"
#include "gui/apps/main/startupenvironment.h"
#include "interfaces/IKelInitServer.h"
#include "interfaces/IMemoryInit.h"
#include "interfaces/IOroAppMainHook.h"
#include "interfaces/IOroAppStarter.h"
#include "interfaces/IOroMManager.h"
#include "interfaces/IOroNetworkService.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "platform/sharedlibrary.h"
#include "services/helpservice.h"
#include "services/languagechoice.h"
#include "services/orostartuperrorlog.h"

namespace {

// Whether a script's error decides the result of a run. An application of its own has shown the
// error to its user; only where the run was to end with the script it counts there too.
bool scriptErrorCounts(bool hasStarter) {
  if (!hasStarter) return true;
  SPtr<IDataStore> store;
  return store && store->GetInt("Scripting/ExitOnMacroEnd", nullptr) >= 1;
}

bool hasScriptError() {
  SPtr<IDataStore> store;
  return store && !store->GetOroString("Python/Error String", nullptr).isEmpty();
}

void endMemoryManager() {
  SPtr<OroMM::IOroMManager> manager;
  if (IMemoryInit* memory = oroQuery<IMemoryInit>(manager.get())) memory->end();
}

void askNetworkState() {
  SPtr<IOroNetworkService> network;
  if (network) network->updateNetworkState();
}

// Without an application there is nobody to show help to.
void prepareHelp() {
  HelpService* const help = getHelpService();
  help->loadVolumes();
  help->createViewer();
}

}  // namespace

OroAppMain::OroAppMain() : errorText_(kNoError) { oroAppGlobals().appMain = this; }

OroAppMain::~OroAppMain() { OroAppMain::shutDown(); }

int32_t OroAppMain::init(int32_t argc, const OroString* argv, IOroAppMainHook* hook) {
  const int32_t status = initEssential();
  return status != 0 ? status : initConfigurable(argc, argv, hook);
}

int32_t OroAppMain::initEssential() {
  OroAppGlobals& globals = oroAppGlobals();
  globals.componentManager = new KelComponentManager();
  globals.broker = new OroObjectBroker(globals.componentManager);
  oroSetBroker(globals.broker);
  // Nobody owns the broker; without a reference the first holder that goes would destroy it.
  globals.broker->addRef();
  globals.componentManager->setBroker(globals.broker);
  globals.broker->registerService(KelCString::borrow(IOroComponentManager::interfaceName()),
                                  globals.componentManager);
  globals.classRegistration = globals.broker->classRegistration();
  registerBuiltInServices(*globals.broker);
  if (oroWantsStartupErrorLog()) oroCreateStartupErrorLog();
  registerBuiltInComponent();
  return 0;
}

int32_t OroAppMain::initConfigurable(int32_t argc, const OroString* argv, IOroAppMainHook* hook) {
  const OroAppGlobals& globals = oroAppGlobals();
  if (hook != nullptr) {
    hook->beforeEnvironment(globals.broker, globals.classRegistration, globals.componentManager);
  }
  putArgumentsInRegistry(argc, argv);
  putProductFactsInRegistry();
  IPtr<IKelInitServer> initServer(loadInitServer(globals.componentManager));
  if (!initServer) return failConfigurable(kInitServerFailed);
  if (!readDescription(*initServer)) return failConfigurable(kDescriptionFailed);
  starter_ = SPtr<IOroAppStarter>();
  if (globals.requireStarter && !starter_) return failConfigurable(kStarterMissing);
  if (starter_) starter_->init(argc, argv);
  firstLanguageStep();
  initServer->finish();
  initServer = nullptr;
  if (starter_) starter_->initDone();
  askNetworkState();
  if (starter_) prepareHelp();
  return startApplication();
}

int32_t OroAppMain::failConfigurable(const char* errorText) {
  errorText_ = errorText;
  return 1;
}

bool OroAppMain::readDescription(IKelInitServer& initServer) {
  initServer.setClassRegistration(oroAppGlobals().classRegistration);
  // Libraries that the components depend on lie beside the executable.
  platform::setLibraryDirectory(oroDirPath("exe").wideText());
  return initServer.readDescription(0);
}

int32_t OroAppMain::startApplication() {
  const int32_t result = starter_ ? starter_->start() : 0;
  if (result != 0) errorText_ = kStartFailed;
  started_ = result == 0;
  return result;
}

int32_t OroAppMain::run() {
  if (!started_ || !starter_) return 1;
  return starter_->run();
}

int32_t OroAppMain::shutDown() {
  if (!started_) return 0;
  const bool hasStarter = static_cast<bool>(starter_);
  started_ = false;
  const int32_t result = scriptErrorCounts(hasStarter) && hasScriptError() ? 1 : 0;
  if (hasStarter) {
    starter_->shutDown();
    starter_ = nullptr;
    getGenDataStore()->CommitWriter();
  }
  const OroAppGlobals& globals = oroAppGlobals();
  if (globals.componentManager != nullptr) globals.componentManager->shutDownComponents();
  endMemoryManager();
  return result;
}

IOroObjBroker* OroAppMain::objectBroker() { return oroAppGlobals().broker; }

void OroAppMain::setErrorHandler(void* handler) { oroAppGlobals().errorHandler = handler; }
