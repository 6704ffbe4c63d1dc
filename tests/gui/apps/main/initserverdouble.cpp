#include "tests/gui/apps/main/initserverdouble.h"

#include "framework/kelcomponentmanager.h"
#include "framework/oroobjectbroker.h"
#include "framework/staticentrypoints.h"
#include "gui/apps/main/appglobals.h"
#include "interfaces/IOroComponentManagerV3.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/orostring.h"
#include "tests/gui/apps/main/events.h"

namespace tests {
namespace {

struct InitServer : Double<InitServer, IKelInitServer> {
  static constexpr const char* className() { return "InitServer"; }
  ~InitServer() override { event("init server gone"); }
  bool readDescription(int32_t options) override {
    event("readDescription", options);
    if (initServerPlan().onRead) initServerPlan().onRead();
    return initServerPlan().describes;
  }
  void finish() override { event("finish"); }
  void setClassRegistration(IOroClassRegistration* registration) override {
    event(registration == oroAppGlobals().classRegistration ? "setClassRegistration"
                                                            : "another registration");
  }
};

struct InitServerComponent : Double<InitServerComponent, IOroComponent> {
  static constexpr const char* className() { return "InitServerComponent"; }
  void initialise(IOroObjBroker*) override { event("component initialise"); }
  void shutDown() override { event("component shutDown"); }
  int32_t getClassObject(const GUID& classId, IOroUnknown** out) override {
    constexpr GUID initServer = {
        0x87B8EFFD, 0xA228, 0x495D, {0x96, 0xE0, 0xA5, 0x0F, 0xDB, 0xA4, 0x25, 0xA3}};
    *out = classId == initServer ? new InitServer() : nullptr;
    return 1;
  }
};

int entryPoint(int32_t* version, IOroComponent** component) {
  *version = 100;
  *component = new InitServerComponent();
  return 1;
}

}  // namespace

InitServerPlan& initServerPlan() {
  static InitServerPlan plan;
  return plan;
}

StaticInitServer::StaticInitServer() { initServerPlan() = {}; }

void StaticInitServer::beforeEnvironment(IOroObjBroker* broker, IOroClassRegistration* registration,
                                         IOroComponentManager* manager) {
  const OroAppGlobals& globals = oroAppGlobals();
  const IOroComponentManager* known = globals.componentManager;
  const IOroObjBroker* knownBroker = globals.broker;
  const bool right =
      broker == knownBroker && registration == globals.classRegistration && manager == known;
  event(right ? "hook" : "hook with odd arguments");
  addStaticEntryPoint(OroString("initserver"), entryPoint);
  oroQuery<IOroComponentManagerV3>(manager)->setStaticLinkage(true);
  if (onHook) onHook();
}

}  // namespace tests
