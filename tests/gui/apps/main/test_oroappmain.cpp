#include "gui/apps/main/oroappmain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "base/basic/gendatastore.h"
#include "base/basic/keldatafactories.h"
#include "base/basic/keldatavisitor.h"
#include "framework/kelcomponentmanager.h"
#include "framework/oroobjectbroker.h"
#include "gui/apps/cowl/builtincomponent.h"
#include "gui/apps/main/appglobals.h"
#include "interfaces/IHelpViewer.h"
#include "interfaces/IOroCompLangInitializer.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroRegistry.h"
#include "interfaces/IProductInfo.h"
#include "orobasictypes/sptr.h"
#include "platform/hooks.h"
#include "platform/network.h"
#include "services/crashhandler.h"
#include "services/helpservice.h"
#include "tests/gui/apps/main/appworld.h"
#include "tests/gui/apps/main/initserverdouble.h"
#include "tests/gui/apps/main/starterdouble.h"

namespace {

using testing::ElementsAre;
using tests::events;
using tests::registryText;

class AppMain : public testing::Test {
 protected:
  int32_t init() { return application().init(2, arguments_.data(), &hook_); }
  // Makes the starter known in the application description.
  tests::Starter* withStarter() {
    auto* const starter = new tests::Starter();
    tests::initServerPlan().onRead = [starter] { tests::publish("IOroAppStarter", starter); };
    return starter;
  }
  OroAppMain& application() { return *application_; }
  void endApplication() { application_.reset(); }

  tests::AppWorld world_;
  std::vector<OroString> arguments_ = tests::argumentsOf({"cowl", "first"});
  tests::StaticInitServer hook_;
  std::unique_ptr<OroAppMain> application_ = std::make_unique<OroAppMain>();
};

TEST_F(AppMain, IsNothingAtFirst) {
  EXPECT_STREQ(application().errorText(), "No Error");
  EXPECT_EQ(application().objectBroker(), nullptr);
  EXPECT_FALSE(application().isHeadless());
  EXPECT_EQ(application().run(), 1);
  EXPECT_EQ(application().shutDown(), 0);
  EXPECT_EQ(oroAppGlobals().appMain, &application());
}

TEST_F(AppMain, HasSevenTextsForWhatHappened) {
  EXPECT_STREQ(OroAppMain::kNoError, "No Error");
  EXPECT_STREQ(OroAppMain::kInitEssentialFailed, "InitEssential failed");
  EXPECT_STREQ(OroAppMain::kInitConfigurableFailed, "InitConfigurable failed");
  EXPECT_STREQ(OroAppMain::kInitServerFailed, "Init server load failed");
  EXPECT_STREQ(OroAppMain::kDescriptionFailed, " Application description read failed");
  EXPECT_STREQ(OroAppMain::kStarterMissing, "Application object not found");
  EXPECT_STREQ(OroAppMain::kStartFailed, "Application start failed");
}

TEST_F(AppMain, EssentialPartMakesManagerAndBroker) {
  EXPECT_EQ(application().initEssential(), 0);
  IOroObjBroker* const broker = application().objectBroker();
  ASSERT_NE(broker, nullptr);
  EXPECT_EQ(oroBroker(), broker);
  EXPECT_EQ(broker->classRegistration(), oroAppGlobals().classRegistration);
  SPtr<IOroComponentManager> manager;
  EXPECT_EQ(manager.get(), oroAppGlobals().componentManager);
  EXPECT_EQ(broker->componentManager(), manager.get());
  EXPECT_TRUE(events().empty());
}

TEST_F(AppMain, EssentialPartEntersTheExecutableAsAComponent) {
  application().initEssential();
  SPtr<IOroComponentManager> manager;
  IOroComponent* component = nullptr;
  EXPECT_TRUE(manager->getComponent(kCowlComponentId, KelCString(), &component));
  ASSERT_NE(component, nullptr);
  EXPECT_STREQ(component->getClassName(), "CowlComponent");
  void* app = nullptr;
  EXPECT_EQ(oroCreateObject(kCowlAppClass, KelCString::borrow("IAppCustomizer"), &app), 0)
      << "its classes are the description's business";
  EXPECT_EQ(application().objectBroker()->getLastStatus(), 1001);
}

TEST_F(AppMain, TheNetworksStateIsInTheSettingsAfterTheStart) {
  tests::setNumber("Network/Internal", 7);
  const platform::HookGuard find(platform::findHostHook,
                                 [](const std::string&, platform::HostAddress&) { return true; });
  const platform::HookGuard echo(platform::answersEchoHook,
                                 [](const platform::HostAddress&, int) { return true; });
  EXPECT_EQ(init(), 0);
  EXPECT_EQ(getGenDataStore()->GetInt("Network/Internal", nullptr), 1);
}

TEST_F(AppMain, ProductFactsStayUnfilledUntilSomebodyAsksForTheApp) {
  tests::initServerPlan().onRead = [] {
    oroAppGlobals().classRegistration->registerClass(kCowlAppClass, kCowlComponentId,
                                                     KelCStringSet(), KelCString("CowlApp"));
  };
  EXPECT_EQ(init(), 0);
  SPtr<IProductInfo> product;
  KelCString text;
  EXPECT_STREQ(product->productName(text).c_str(), "");
  EXPECT_TRUE(product->isPrototype());
  void* app = nullptr;
  EXPECT_EQ(oroCreateObject(kCowlAppClass, KelCString::borrow("IAppCustomizer"), &app), 1);
  EXPECT_STREQ(product->productName(text).c_str(), "CowlCORE");
  EXPECT_STREQ(product->fullVersion(text).c_str(), "202100");
  EXPECT_EQ(registryText("PRODUCT_INFO/displayVersion"), "2021");
}

TEST_F(AppMain, TheProcessHoldsAReferenceOnTheBroker) {
  application().initEssential();
  OroObjectBroker* const broker = oroAppGlobals().broker;
  EXPECT_EQ(broker->refCount(), 1);
  { IPtr<IOroSubject> subject(broker); }
  EXPECT_EQ(oroAppGlobals().broker->refCount(), 1);
  EXPECT_EQ(oroBroker(), broker);
}

TEST_F(AppMain, StartWithoutAStarterGoesThroughTheInitServer) {
  EXPECT_EQ(init(), 0);
  EXPECT_THAT(events(), ElementsAre("hook", "component initialise", "setClassRegistration",
                                    "readDescription 0", "finish", "init server gone", "network"));
  EXPECT_TRUE(application().isHeadless());
  EXPECT_STREQ(application().errorText(), "No Error");
  EXPECT_EQ(application().run(), 1);
}

TEST_F(AppMain, StartWithAStarterTakesEachStepInItsPlace) {
  auto* const starter = new tests::Starter();
  tests::initServerPlan().onRead = [starter] { tests::publish("IOroAppStarter", starter); };
  starter->runResult = 9;
  EXPECT_EQ(init(), 0);
  EXPECT_THAT(events(),
              ElementsAre("hook", "component initialise", "setClassRegistration",
                          "readDescription 0", "starter init 2 'first'", "finish",
                          "init server gone", "starter initDone", "network", "starter start"));
  EXPECT_FALSE(application().isHeadless());
  events().clear();
  EXPECT_EQ(application().run(), 9);
  EXPECT_THAT(events(), ElementsAre("starter run"));
}

constexpr GUID kSpeakerClass = {
    0x7B5A4C1E, 0x2D90, 0x4F3B, {0x8E, 0x61, 0x0A, 0x47, 0x93, 0xD5, 0x1C, 0xF2}};

struct Language : tests::Double<Language, IOroLanguageID> {
  static constexpr const char* className() { return "Language"; }
  const KelCString& getLanguage() override { return code; }
  void setLanguage(const KelCString& newCode) override { code = KelCString(newCode.text()); }
  KelCString code;
};

struct Speaker : tests::Double<Speaker, IOroCompLangInitializer> {
  static constexpr const char* className() { return "Speaker"; }
  void initLanguage(IOroLanguageID* language) override {
    tests::event(std::string("language ") + language->getLanguage().c_str());
  }
};

TEST_F(AppMain, TheLanguageIsChosenBetweenTheApplicationAndTheEndOfTheInitServer) {
  auto* const starter = new tests::Starter();
  tests::initServerPlan().onRead = [this, starter] {
    tests::publish("IOroAppStarter", starter);
    tests::publish("IOroLanguageID", new Language);
    application().objectBroker()->setClassObject(kSpeakerClass, new Speaker);
    SPtr<Velmora::IOroRegistry> registry;
    KelCString section("I18N/speaker");
    registry->setValue(section, KelCString("{7B5A4C1E-2D90-4F3B-8E61-0A4793D51CF2}"));
    KelCString key("Application/Language");
    registry->setValue(key, KelCString("de"));
  };
  EXPECT_EQ(init(), 0);
  EXPECT_THAT(events(),
              ElementsAre("hook", "component initialise", "setClassRegistration",
                          "readDescription 0", "starter init 2 'first'", "language de", "finish",
                          "init server gone", "starter initDone", "network", "starter start"));
}

constexpr GUID kViewerClass = {
    0x0C9D5C8B, 0x341E, 0x4B42, {0x8F, 0xF2, 0x13, 0xCC, 0x34, 0xA4, 0xF3, 0x93}};

struct Viewer : tests::Double<Viewer, IHelpViewer> {
  static constexpr const char* className() { return "Viewer"; }
  void show(const OroString&) override {}
  void queryInterface(const char* name, void* out) override {
    if (name != nullptr && std::string(name) == "IHelpViewer") tests::event("viewer");
    Double::queryInterface(name, out);
  }
};

TEST_F(AppMain, HelpIsPreparedBetweenTheNetworkAndTheStartOfAnApplication) {
  auto* const starter = new tests::Starter();
  tests::initServerPlan().onRead = [this, starter] {
    tests::publish("IOroAppStarter", starter);
    application().objectBroker()->setClassObject(kViewerClass, new Viewer);
  };
  getGenDataStore()->CreateDirectory("Document");
  getGenDataStore()->CreateVoid("Document/GenCmdDone", 0);
  EXPECT_EQ(init(), 0);
  ASSERT_GE(events().size(), 3u);
  EXPECT_THAT(tests::Events(events().end() - 3, events().end()),
              ElementsAre("network", "viewer", "starter start"));
  getHelpService()->setTopicOverride(KelCString("override"), false);
  getGenDataStore()->Fire(nullptr, "Document/GenCmdDone");
  KelCString topic;
  getHelpService()->topicOverride(topic);
  EXPECT_TRUE(topic.isEmpty()) << "the volumes are loaded too";
}

TEST_F(AppMain, WithoutAnApplicationThereIsNoHelp) {
  tests::initServerPlan().onRead = [this] {
    application().objectBroker()->setClassObject(kViewerClass, new Viewer);
  };
  EXPECT_EQ(init(), 0);
  EXPECT_THAT(events(), testing::Not(testing::Contains("viewer")));
}

TEST_F(AppMain, TheHookComesBeforeTheEnvironmentAndTheDescriptionAfterIt) {
  std::string atHook;
  std::string atDescription;
  hook_.onHook = [&] { atHook = registryText("MAIN_ARGV/1"); };
  tests::initServerPlan().onRead = [&] { atDescription = registryText("MAIN_ARGV/1"); };
  EXPECT_EQ(init(), 0);
  EXPECT_EQ(atHook, "<absent>");
  EXPECT_EQ(atDescription, "first");
}

TEST_F(AppMain, AFailedDescriptionEndsTheStart) {
  withStarter();
  const auto publishStarter = tests::initServerPlan().onRead;
  tests::initServerPlan().onRead = [&] { publishStarter(); };
  tests::initServerPlan().describes = false;
  EXPECT_EQ(init(), 1);
  EXPECT_STREQ(application().errorText(), " Application description read failed");
  EXPECT_THAT(events(), ElementsAre("hook", "component initialise", "setClassRegistration",
                                    "readDescription 0", "init server gone"));
  EXPECT_FALSE(application().isHeadless());
  EXPECT_EQ(application().run(), 1);
  events().clear();
  endApplication();
  EXPECT_TRUE(events().empty());
}

TEST_F(AppMain, AStarterThatDoesNotStartGivesItsOwnResult) {
  withStarter()->startResult = 42;
  EXPECT_EQ(init(), 42);
  EXPECT_STREQ(application().errorText(), "Application start failed");
  EXPECT_EQ(application().run(), 1);
  events().clear();
  EXPECT_EQ(application().shutDown(), 0);
  endApplication();
  EXPECT_TRUE(events().empty());
}

TEST_F(AppMain, AStarterMayBeRequired) {
  oroAppGlobals().requireStarter = true;
  EXPECT_EQ(init(), 1);
  EXPECT_STREQ(application().errorText(), "Application object not found");
  EXPECT_THAT(events(), ElementsAre("hook", "component initialise", "setClassRegistration",
                                    "readDescription 0", "init server gone"));
}

TEST_F(AppMain, ARequiredStarterThatIsThereStarts) {
  oroAppGlobals().requireStarter = true;
  withStarter();
  EXPECT_EQ(init(), 0);
}

// --- Shutting down.

bool commitRecorded(IKelDataVisitor*) {
  tests::event("commit");
  return true;
}

class ShutDown : public AppMain {
 protected:
  ShutDown() {
    getGenDataStore()->SetWriter(new KelDataVisitor(IKelDataVisitor::kWriting));
    kelDataFactories().commit = commitRecorded;
  }
  ~ShutDown() override {
    getGenDataStore()->SetWriter(nullptr);
    kelDataFactories().commit = before_;
  }
  void start() {
    init();
    events().clear();
  }

 private:
  decltype(kelDataFactories().commit) before_ = kelDataFactories().commit;
};

TEST_F(ShutDown, StopsStarterJournalComponentsAndMemoryInThisOrder) {
  withStarter();
  start();
  tests::publish("IOroMManager", new tests::MemoryManager());
  EXPECT_EQ(application().shutDown(), 0);
  EXPECT_THAT(events(),
              ElementsAre("starter shutDown", "commit", "component shutDown", "memory end"));
}

TEST_F(ShutDown, CommitsNothingWithoutAStarter) {
  start();
  EXPECT_EQ(application().shutDown(), 0);
  EXPECT_THAT(events(), ElementsAre("component shutDown"));
}

TEST_F(ShutDown, DropsTheStarterRightAfterItsEnd) {
  tests::Starter* const starter = withStarter();
  start();
  EXPECT_EQ(starter->refCount(), 2);
  application().shutDown();
  EXPECT_EQ(starter->refCount(), 1);
}

TEST_F(ShutDown, HappensOnce) {
  tests::setText("Python/Error String", "broken");
  start();
  EXPECT_EQ(application().shutDown(), 1);
  events().clear();
  EXPECT_EQ(application().shutDown(), 0);
  EXPECT_FALSE(application().isHeadless());
  endApplication();
  EXPECT_TRUE(events().empty());
}

TEST_F(ShutDown, HappensInTheDestructorOtherwise) {
  withStarter();
  start();
  endApplication();
  EXPECT_THAT(events(), ElementsAre("starter shutDown", "commit", "component shutDown"));
}

TEST_F(ShutDown, LeavesBrokerManagerAndServicesAlive) {
  start();
  application().shutDown();
  endApplication();
  EXPECT_NE(oroAppGlobals().broker, nullptr);
  EXPECT_TRUE(SPtr<IOroErrorService>());
  EXPECT_TRUE(SPtr<IOroComponentManager>());
}

TEST_F(ShutDown, AMemoryManagerWithoutAnEndIsLeftAlone) {
  start();
  struct Plain : tests::Double<Plain, OroMM::IOroMManager> {
    static constexpr const char* className() { return "Plain"; }
    void* AllocBlock(int32_t, bool) override { return nullptr; }
    void FreeBlock(void*) override {}
    bool ReleaseMemory() override { return false; }
    int64_t CoreLimit() override { return 0; }
    int64_t SwapLimit() override { return 0; }
    int64_t SwapPages() override { return 0; }
    int64_t CorePages() override { return 0; }
  };
  tests::publish("IOroMManager", new Plain());
  EXPECT_EQ(application().shutDown(), 0);
}

struct ScriptErrorRow {
  bool hasStarter;
  int exitOnMacroEnd;
  const char* error;
  int32_t result;
};

class ScriptError : public AppMain, public testing::WithParamInterface<ScriptErrorRow> {};

TEST_P(ScriptError, CountsWithoutAStarterOrWhereTheRunEndsWithTheScript) {
  if (GetParam().hasStarter) withStarter();
  ASSERT_EQ(init(), 0);
  tests::setNumber("Scripting/ExitOnMacroEnd", GetParam().exitOnMacroEnd);
  tests::setText("Python/Error String", GetParam().error);
  EXPECT_EQ(application().shutDown(), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ScriptError,
    testing::Values(ScriptErrorRow{false, 0, "broken", 1}, ScriptErrorRow{false, 0, "", 0},
                    ScriptErrorRow{false, 1, "broken", 1}, ScriptErrorRow{true, 0, "broken", 0},
                    ScriptErrorRow{true, -1, "broken", 0}, ScriptErrorRow{true, 1, "broken", 1},
                    ScriptErrorRow{true, 2, "broken", 1}, ScriptErrorRow{true, 1, "", 0}));

TEST_F(AppMain, ShutDownReadsTheScriptErrorBeforeTheStarterEnds) {
  struct ClearingStarter : tests::Starter {
    void shutDown() override { tests::setText("Python/Error String", ""); }
  };
  auto* const starter = new ClearingStarter();
  tests::initServerPlan().onRead = [starter] { tests::publish("IOroAppStarter", starter); };
  ASSERT_EQ(init(), 0);
  tests::setNumber("Scripting/ExitOnMacroEnd", 1);
  tests::setText("Python/Error String", "broken");
  EXPECT_EQ(application().shutDown(), 1);
}

TEST_F(AppMain, UndeclaredSettingsAreNoScriptError) {
  withStarter();
  ASSERT_EQ(init(), 0);
  EXPECT_EQ(application().shutDown(), 0);
}

void ownHandler(int) {}

// What an invalid memory access would call; gives the signal back to the system.
void (*installedHandler())(int) { return std::signal(SIGSEGV, SIG_DFL); }

TEST_F(AppMain, GivesItsErrorHandlerToTheErrorService) {
  application().setErrorHandler(reinterpret_cast<void*>(ownHandler));
  application().initEssential();
  EXPECT_EQ(installedHandler(), ownHandler);
}

TEST_F(AppMain, AnErrorHandlerThatComesAfterTheErrorServiceIsNotUsed) {
  application().initEssential();
  application().setErrorHandler(reinterpret_cast<void*>(ownHandler));
  EXPECT_EQ(installedHandler(), oroStandardCrashHandler);
}

}  // namespace
