#pragma once

// An init server linked into the test, and the hook that lets the component manager find it.
//
//   tests::InitServerPlan& plan = tests::initServerPlan();
//   plan.onRead = [&] { tests::publish("IOroAppStarter", &starter); };
//   tests::StaticInitServer hook;
//   application.init(argc, argv, &hook);

#include <cstdint>
#include <functional>

#include "interfaces/IKelInitServer.h"
#include "interfaces/IOroAppMainHook.h"
#include "interfaces/IOroComponent.h"
#include "tests/gui/apps/main/double.h"

namespace tests {

/// How it behaves; the hook's constructor sets all of it back to a server that works.
struct InitServerPlan {
  bool describes = true;         ///< result of readDescription
  std::function<void()> onRead;  ///< what the description makes known
};

InitServerPlan& initServerPlan();

class StaticInitServer : public IOroAppMainHook {
 public:
  StaticInitServer();
  std::function<void()> onHook;
  void beforeEnvironment(IOroObjBroker* broker, IOroClassRegistration* registration,
                         IOroComponentManager* manager) override;
};

}  // namespace tests
