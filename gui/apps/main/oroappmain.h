// OroAppMain: the application main object of this process, which owns the order of start and stop.
//
// Made once, on the main function's stack; not counted. What failed in a start is in errorText();
// the user has been told by then through the error service. Main thread.
#pragma once

#include "interfaces/IOroAppMainV2.h"
#include "orobasictypes/iptr.h"

class IKelInitServer;
class IOroAppStarter;

class OroAppMain : public IOroAppMainV2 {
 public:
  // What errorText() may say, leading blank included; callers compare the texts. The two of whole
  // phases are reserved for them: a phase that fails says one of the finer ones.
  static constexpr const char* kNoError = "No Error";
  static constexpr const char* kInitEssentialFailed = "InitEssential failed";
  static constexpr const char* kInitConfigurableFailed = "InitConfigurable failed";
  static constexpr const char* kInitServerFailed = "Init server load failed";
  static constexpr const char* kDescriptionFailed = " Application description read failed";
  static constexpr const char* kStarterMissing = "Application object not found";
  static constexpr const char* kStartFailed = "Application start failed";

  OroAppMain();
  ~OroAppMain() override;
  OroAppMain(const OroAppMain&) = delete;
  OroAppMain& operator=(const OroAppMain&) = delete;

  int32_t init(int32_t argc, const OroString* argv, IOroAppMainHook* hook) override;
  int32_t initEssential() override;
  int32_t initConfigurable(int32_t argc, const OroString* argv, IOroAppMainHook* hook) override;
  int32_t run() override;
  int32_t shutDown() override;
  IOroObjBroker* objectBroker() override;
  void setErrorHandler(void* handler) override;
  const char* errorText() override { return errorText_; }

  // Started, and without an application starter: the command line drives the run.
  bool isHeadless() const { return started_ && !starter_; }

 private:
  int32_t failConfigurable(const char* errorText);
  bool readDescription(IKelInitServer& initServer);
  int32_t startApplication();

  bool started_ = false;          // from a successful start until shutDown begins
  IPtr<IOroAppStarter> starter_;  // null where the application has none
  const char* errorText_;         // of the last phase that failed
};
