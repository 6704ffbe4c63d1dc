#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/basic/keldatastore.h"
#include "framework/oroobjectbroker.h"
#include "orobasictypes/iptr.h"
#include "tests/framework/brokerfixture.h"

namespace {

using tests::FakeLog;
using tests::FakeObject;
using tests::FakeObserver;
using tests::idOf;
using tests::idText;

using Texts = std::vector<std::string>;

constexpr const char* kReportedService = "IFakeService";

// A broker with an observer that hears its reports.
class BrokerReports : public tests::BrokerFixture {
 protected:
  BrokerReports() {
    broker_->attach(&observer_);
    broker_->attach(&last_);
  }

  int32_t create(const char* interfaceName = kReportedService) {
    void* found = nullptr;
    return broker_->createObject(kClass, name(interfaceName), &found);
  }
  const Texts& texts() const { return observer_.texts; }

  FakeObserver observer_;
  FakeObserver last_;  // the one that nobody calls
};

TEST_F(BrokerReports, NoManager) {
  OroObjectBroker broker(nullptr, name("side"));
  broker.attach(&observer_);
  broker.attach(&last_);
  void* found = nullptr;
  broker.createInstance(kClass, name(kReportedService), &found);
  EXPECT_EQ(texts(), Texts{"no component manager to create class instance."});
}

TEST_F(BrokerReports, ClassThatNobodyProvides) {
  create();
  EXPECT_EQ(texts(), Texts{"no component provides implementation of [" + idText("0xa1") + "]"});
}

TEST_F(BrokerReports, ClassNameIsRememberedAfterTheClassHasGone) {
  broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
  broker_->unregisterClass(kClass);
  create();
  EXPECT_EQ(texts(),
            Texts{"no component provides implementation of [" + idText("0xa1") + "] - KelClass"});
}

TEST_F(BrokerReports, ClassNameIsThatOfTheFirstRegistration) {
  broker_->registerClass(kClass, kComponent, {}, name("KelFirst"));
  testing::internal::CaptureStderr();
  broker_->registerClass(kClass, kComponent, {}, name("KelSecond"));
  testing::internal::GetCapturedStderr();
  component_.status = 0;
  create();
  EXPECT_EQ(texts().back(), "can't get object of id [KelFirst (" + idText("0xa1") +
                                ")] in component [" + idText("0xc0") + "]");
}

TEST_F(BrokerReports, ComponentThatIsNotKnown) {
  provide(1, nullptr);
  manager_.components.clear();
  create();
  EXPECT_EQ(texts(), Texts{"can't get component from id." + idText("0xa1")});
}

TEST_F(BrokerReports, ObjectOfANamedClassInANamedComponent) {
  provide(0, nullptr);
  manager_.names[kComponent] = "tools";
  create();
  EXPECT_EQ(texts(), Texts{"can't get object of id [KelClass (" + idText("0xa1") +
                           ")] in component [tools (" + idText("0xc0") + ")]"});
}

TEST_F(BrokerReports, ObjectOfANamedClassInAComponentWithoutAName) {
  provide(0, nullptr);
  create();
  EXPECT_EQ(texts(), Texts{"can't get object of id [KelClass (" + idText("0xa1") +
                           ")] in component [" + idText("0xc0") + "]"});
}

TEST_F(BrokerReports, ObjectOfAClassWithoutAName) {
  broker_->registerClass(kClass, kComponent, {}, KelCString());
  component_.status = 0;
  create();
  manager_.names[kComponent] = "tools";
  create();
  EXPECT_EQ(texts(), (Texts{"can't get object of id [" + idText("0xa1") + "] in component [" +
                                idText("0xc0") + "]",
                            "can't get object of id [" + idText("0xa1") +
                                "] in component [tools (" + idText("0xc0") + ")]"}));
}

TEST_F(BrokerReports, ComponentThatDidNotLoadIsReportedAsWithoutObject) {
  provide(1, [] { return nullptr; });
  manager_.components[kComponent] = nullptr;
  create();
  ASSERT_EQ(texts().size(), 1u);
  EXPECT_EQ(texts()[0].rfind("can't get object of id [", 0), 0u);
}

TEST_F(BrokerReports, InterfaceWithoutADefaultClass) {
  FakeObject object;
  provide(1, [&] { return &object; });
  create("IFakeOther");
  EXPECT_EQ(texts(), Texts{"class [FakeObject] does not support [IFakeOther] - <unknown>"});
}

TEST_F(BrokerReports, InterfaceWithADefaultClassNamesThatOnesComponent) {
  FakeObject object;
  provide(1, [&] { return &object; });
  manager_.names[kComponent] = "asked";
  manager_.names[idOf(0xC1)] = "standard";
  broker_->registerClass(kOtherClass, idOf(0xC1), {}, name("KelOther"));
  broker_->registerInterface(name("IFakeOther"), kOtherClass);
  create("IFakeOther");
  EXPECT_EQ(texts(), Texts{"class [FakeObject] does not support [IFakeOther] - standard"});
}

TEST_F(BrokerReports, InterfaceThatIsTaken) {
  manager_.names[kComponent] = "tools";
  broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
  broker_->registerInterface(name(kReportedService), kOtherClass);
  EXPECT_TRUE(texts().empty());
  broker_->registerInterface(name(kReportedService), kClass);
  broker_->registerInterface(name(kReportedService), kOtherClass);
  EXPECT_EQ(texts(), (Texts{"interface already registered [IFakeService] - tools",
                            "interface already registered [IFakeService] - <unknown>"}));
}

TEST_F(BrokerReports, DuplicateClassIsToldInThreeReportsAndOnStandardError) {
  manager_.names[kComponent] = "tools";
  broker_->registerClass(kClass, kComponent, {}, name("KelFirst"));
  testing::internal::CaptureStderr();
  broker_->registerClass(kClass, idOf(0xC1), {}, name("KelSecond"));
  broker_->registerClass(kClass, kComponent, {}, name("KelThird"));
  std::string printed = testing::internal::GetCapturedStderr();
  std::erase(printed, '\r');

  const std::string first = "  first defined in: " + idText("0xc0") + "-tools";
  const std::string second = "   also defined in: " + idText("0xc1") + "-";
  const std::string third = "   also defined in: " + idText("0xc0") + "-tools";
  const std::string duplicate = "duplicate class id: " + idText("0xa1");
  EXPECT_EQ(texts(), (Texts{duplicate, first, second, duplicate, first, third}));
  EXPECT_EQ(printed, "(1) duplicate class name = KelSecond id = " + idText("0xa1") + "\n" + first +
                         "\n" + second + "\n" + "(2) duplicate class name = KelThird id = " +
                         idText("0xa1") + "\n" + first + "\n" + third + "\n");
}

TEST_F(BrokerReports, DuplicatesAreCountedAcrossBrokers) {
  OroObjectBroker* const group = broker_->groupBroker(name("g"), true);
  testing::internal::CaptureStderr();
  for (OroObjectBroker* const broker : {&*broker_, group}) {
    broker->registerClass(kClass, kComponent, {}, name("KelClass"));
    broker->registerClass(kClass, kComponent, {}, name("KelClass"));
  }
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_NE(printed.find("(1) duplicate"), std::string::npos);
  EXPECT_NE(printed.find("(2) duplicate"), std::string::npos);
}

TEST_F(BrokerReports, QuestionsReportNothing) {
  FakeObject object;
  provide(7, [&] { return &object; });
  broker_->registerInterface(name(kReportedService), kClass);
  EXPECT_FALSE(broker_->hasService(name(kReportedService)));
  EXPECT_FALSE(broker_->classSupports(kClass, name(kReportedService)));
  manager_.components.clear();
  EXPECT_FALSE(broker_->classSupports(kClass, name(kReportedService)));
  EXPECT_TRUE(texts().empty());
}

TEST_F(BrokerReports, LogServiceHearsEachReport) {
  auto* const log = new FakeLog;
  broker_->registerService(name("IOroLog3"), log);
  create();
  EXPECT_EQ(log->texts, texts());
  EXPECT_EQ(log->texts.size(), 1u);
}

TEST_F(BrokerReports, LastReportStandsInTheSettings) {
  constexpr const char* setting = "objectbroker_errorstring";
  auto* const store = new KelDataStore(false, 5, 37);
  const IPtr<IDataStore> held(store);
  broker_->registerService(name("IDataStore"), held.object());
  EXPECT_FALSE(store->Exists(setting));
  create();
  EXPECT_EQ(store->GetString(setting, nullptr), texts()[0]);
  EXPECT_EQ(store->GetCapacity(setting, nullptr), 4095);
  provide(0, nullptr);
  create();
  ASSERT_EQ(texts().size(), 2u);
  EXPECT_EQ(store->GetString(setting, nullptr), texts()[1]);
}

TEST_F(BrokerReports, SettingThatIsThereIsKeptAndSet) {
  constexpr const char* setting = "objectbroker_errorstring";
  auto* const store = new KelDataStore(false, 5, 37);
  const IPtr<IDataStore> held(store);
  broker_->registerService(name("IDataStore"), held.object());
  store->CreateString(setting, 20, "as before", 0);
  create();
  EXPECT_EQ(store->GetCapacity(setting, nullptr), 20);
  EXPECT_EQ(std::string(store->GetString(setting, nullptr)).substr(0, 20),
            texts()[0].substr(0, 20));
}

TEST_F(BrokerReports, PlacesAreServedInTheirOrder) {
  auto* const store = new KelDataStore(false, 5, 37);
  const IPtr<IDataStore> held(store);
  broker_->registerService(name("IDataStore"), held.object());
  auto* const log = new FakeLog;
  broker_->registerService(name("IOroLog3"), log);
  observer_.onUpdate = [&] {
    EXPECT_FALSE(store->Exists("objectbroker_errorstring"));
    EXPECT_TRUE(log->texts.empty());
  };
  log->onLog = [&] { EXPECT_TRUE(store->Exists("objectbroker_errorstring")); };
  create();
  EXPECT_EQ(log->texts.size(), 1u);
}

TEST_F(BrokerReports, StatusIsThatOfTheFailureAndNotOfTheReport) {
  broker_->registerService(name("IOroLog3"), new FakeLog);
  EXPECT_EQ(create(), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  broker_->registerInterface(name(kReportedService), kClass);
  broker_->registerInterface(name(kReportedService), kClass);
  EXPECT_EQ(broker_->getLastStatus(), 1004);
}

TEST_F(BrokerReports, LogThatCannotBeMadeIsReportedOnceAndNotWithoutEnd) {
  broker_->registerInterface(name("IOroLog3"), kOtherClass);  // of which nobody has a component
  create();
  ASSERT_EQ(texts().size(), 2u);
  EXPECT_EQ(texts()[0], "no component provides implementation of [" + idText("0xa1") + "]");
  EXPECT_EQ(texts()[1], "no component provides implementation of [" + idText("0xa2") + "]");
}

TEST_F(BrokerReports, ReportWithinAReportReachesObserversOfOtherBrokersOnly) {
  auto* const log = new FakeLog;
  OroObjectBroker* const group = broker_->groupBroker(name("g"), true);
  log->onLog = [&] {
    void* found = nullptr;
    group->createObject(kClass, name(kReportedService), &found);
  };
  broker_->registerService(name("IOroLog3"), log);
  FakeObserver ofGroup;
  group->attach(&ofGroup);
  group->attach(&last_);
  create();
  EXPECT_EQ(log->texts.size(), 1u);
  EXPECT_EQ(ofGroup.texts.size(), 1u);
}

}  // namespace
