#include "framework/kelcomponentmanager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "interfaces/IOroCompInternal.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentContainer.h"
#include "interfaces/IOroInitializer.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/sptr.h"
#include "platform/sharedlibrary.h"
#include "tests/framework/fakes.h"
#include "tests/framework/libs/itestprobe.h"
#include "tests/framework/managerfixture.h"
#include "tests/support/slotnumber.h"

namespace {

using testids::kGood;
using testids::kRecorder;
using testids::kUnknown;
using tests::FakeComponent;

using Notes = std::vector<std::string>;

class FakeContainer : public IOroComponentContainer {
 public:
  static constexpr const char* className() { return "FakeContainer"; }
  using Offers = OroOffers<FakeContainer, IOroComponentContainer>;
  explicit FakeContainer(IOroComponent* component) : component_(component) { ++alive; }
  ~FakeContainer() override { --alive; }
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IOroComponent* component() override { return component_; }

  static inline int alive = 0;

 private:
  IOroComponent* component_;
};

class Manager : public tests::ManagerFixture {
 protected:
  int32_t status() { return manager_->getLastStatus(); }
  static IOroComponent* untouched() { return reinterpret_cast<IOroComponent*>(0x40); }
};

// --- What is known

TEST_F(Manager, NothingIsKnownAtFirst) {
  EXPECT_EQ(status(), 1);
  IOroComponent* found = untouched();
  EXPECT_FALSE(manager_->getComponent(kUnknown, KelCString(), &found));
  EXPECT_EQ(status(), 3001);
  EXPECT_EQ(found, untouched());
  OroString path;
  EXPECT_FALSE(manager_->getLibraryPath(kUnknown, KelCString(), path));
  EXPECT_EQ(status(), 3001);
}

TEST_F(Manager, NullOutputIsRefused) {
  EXPECT_FALSE(manager_->getComponent(kUnknown, KelCString(), nullptr));
  EXPECT_EQ(status(), 3003);
}

TEST_F(Manager, PathAndNameAreEnteredAndReplaced) {
  EXPECT_EQ(manager_->registerComponent(OroString("first"), kGood, KelCString("one"), KelCString()),
            1);
  EXPECT_EQ(
      manager_->registerComponent(OroString("second"), kGood, KelCString("two"), KelCString()), 1);
  OroString path;
  KelCString name;
  EXPECT_TRUE(manager_->getLibraryPath(kGood, KelCString(), path));
  EXPECT_TRUE(manager_->getComponentName(kGood, KelCString(), name));
  EXPECT_TRUE(path == "second");
  EXPECT_TRUE(name == "two");
  EXPECT_EQ(status(), 1);
}

TEST_F(Manager, PathAloneGivesNoName) {
  EXPECT_EQ(manager_->setLibraryPath(kGood, KelCString(), OroString("somewhere")), 1);
  EXPECT_EQ(status(), 1);
  KelCString name("as before");
  EXPECT_FALSE(manager_->getComponentName(kGood, KelCString(), name));
  EXPECT_EQ(status(), 3001);
  EXPECT_TRUE(name == "as before");
}

TEST_F(Manager, AskingDoesNotMakeAGroupAndEnteringDoes) {
  IOroComponent* found = nullptr;
  OroString path;
  FakeComponent component;
  FakeContainer container(&component);
  EXPECT_FALSE(manager_->getComponent(kGood, group("alpha"), &found));
  EXPECT_EQ(status(), 3001);
  EXPECT_FALSE(manager_->getLibraryPath(kGood, group("alpha"), path));
  EXPECT_EQ(status(), 3001);
  EXPECT_FALSE(manager_->unloadComponent(kGood, group("alpha")));
  EXPECT_EQ(status(), 3001);
  EXPECT_FALSE(manager_->registerContainer(kGood, group("alpha"), &container));
  EXPECT_EQ(status(), 3001);

  EXPECT_EQ(manager_->setLibraryPath(kGood, group("alpha"), OroString("x")), 1);
  EXPECT_TRUE(manager_->getLibraryPath(kGood, group("alpha"), path));
  EXPECT_FALSE(manager_->getLibraryPath(kGood, KelCString(), path));
  manager_->registerComponent(OroString("y"), kGood, KelCString("good"), group("beta"));
  EXPECT_TRUE(manager_->getLibraryPath(kGood, group("beta"), path));
  EXPECT_TRUE(path == "y");
}

// --- Containers

TEST_F(Manager, ContainerNeedsNoLoading) {
  FakeComponent component;
  EXPECT_TRUE(manager_->registerContainer(kGood, KelCString(), new FakeContainer(&component)));
  EXPECT_EQ(status(), 1);
  IOroComponent* found = nullptr;
  EXPECT_TRUE(manager_->getComponent(kGood, KelCString(), &found));
  EXPECT_EQ(found, &component);
  EXPECT_EQ(component.initialised, 0);
}

TEST_F(Manager, SecondContainerOfAnIdStaysTheCallers) {
  FakeComponent component;
  manager_->registerContainer(kGood, KelCString(), new FakeContainer(&component));
  FakeContainer second(&component);
  EXPECT_FALSE(manager_->registerContainer(kGood, KelCString(), &second));
  EXPECT_EQ(status(), 3002);
}

TEST_F(Manager, NullContainerIsRefusedBeforeTheGroupIsLookedAt) {
  EXPECT_FALSE(manager_->registerContainer(kGood, group("nowhere"), nullptr));
  EXPECT_EQ(status(), 3003);
}

TEST_F(Manager, UnloadedContainerIsDeletedWhateverItsCount) {
  FakeComponent component;
  auto* const container = new FakeContainer(&component);
  container->addRef();
  manager_->registerContainer(kGood, KelCString(), container);
  EXPECT_TRUE(manager_->unloadComponent(kGood, KelCString()));
  EXPECT_EQ(status(), 1);
  EXPECT_EQ(FakeContainer::alive, 0);
  EXPECT_FALSE(manager_->unloadComponent(kGood, KelCString()));
  EXPECT_EQ(status(), 3001);
}

TEST_F(Manager, ContainerWithoutAComponentGivesNone) {
  manager_->registerContainer(kGood, KelCString(), new FakeContainer(nullptr));
  IOroComponent* found = untouched();
  EXPECT_TRUE(manager_->getComponent(kGood, KelCString(), &found));
  EXPECT_EQ(found, untouched());
  manager_->shutDownComponents();
}

// --- Libraries

TEST_F(Manager, LibraryIsLoadedAtTheFirstRequestAndThenKept) {
  known(kRecorder, "fw_recorder");
  EXPECT_TRUE(journal_.notes.empty());
  IOroComponent* const first = component(kRecorder);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(component(kRecorder), first);
  EXPECT_EQ(journal_.notes, Notes{"initialise"});
}

TEST_F(Manager, UnloadingShutsDownThenDeletesThenClosesTheLibrary) {
  known(kRecorder, "fw_recorder");
  component(kRecorder)->addRef();  // counts play no part
  EXPECT_TRUE(manager_->unloadComponent(kRecorder, KelCString()));
  EXPECT_EQ(journal_.notes, (Notes{"initialise", "shutDown", "deleted", "unloaded"}));
}

TEST_F(Manager, UnloadedComponentStaysKnownAndIsLoadedAgain) {
  known(kRecorder, "fw_recorder");
  component(kRecorder);
  manager_->unloadComponent(kRecorder, KelCString());
  EXPECT_NE(component(kRecorder), nullptr);
  EXPECT_EQ(journal_.notes.back(), "initialise");
}

TEST_F(Manager, ShutDownEndsAllComponentsAndKeepsThem) {
  known(kRecorder, "fw_recorder");
  IOroComponent* const before = component(kRecorder);
  manager_->shutDownComponents();
  EXPECT_EQ(journal_.notes, (Notes{"initialise", "shutDown"}));
  EXPECT_EQ(component(kRecorder), before);
}

TEST_F(Manager, ShutDownLoadsNothing) {
  known(kRecorder, "fw_recorder");
  manager_->shutDownComponents();
  EXPECT_TRUE(journal_.notes.empty());
}

TEST_F(Manager, HostNeverCallsTheTwoUnusedOperations) {
  known(kRecorder, "fw_recorder", "alpha");
  component(kRecorder, "alpha");
  manager_->shutDownComponents();
  manager_->unloadComponent(kRecorder, group("alpha"));
  for (const std::string& note : journal_.notes) EXPECT_EQ(note.rfind("slot", 0), note.npos);
}

TEST_F(Manager, MissingLibraryIsASuccessWithoutAComponentAndIsReportedEachTime) {
  known(kUnknown, "fw_missing");
  IOroComponent* found = untouched();
  EXPECT_TRUE(manager_->getComponent(kUnknown, KelCString(), &found));
  EXPECT_EQ(status(), 1);
  EXPECT_EQ(found, untouched());
  ASSERT_EQ(errors_.texts.size(), 1u);
  EXPECT_EQ(component(kUnknown), nullptr);
  EXPECT_EQ(errors_.texts.size(), 2u);
}

TEST_F(Manager, LibraryThatDoesNotKeepTheContractIsLeftAloneWithoutAReport) {
  for (const char* const library :
       {"fw_version99", "fw_status0", "fw_status2", "fw_nullcomponent", "fw_noentry"}) {
    known(kUnknown, library);
    IOroComponent* found = nullptr;
    EXPECT_TRUE(manager_->getComponent(kUnknown, KelCString(), &found)) << library;
    EXPECT_EQ(found, nullptr) << library;
    EXPECT_EQ(status(), 1) << library;
    EXPECT_FALSE(manager_->unloadComponent(kUnknown, KelCString())) << library;
  }
  EXPECT_TRUE(journal_.notes.empty());  // none was initialised
  EXPECT_TRUE(errors_.texts.empty());
}

TEST_F(Manager, RegistryDecidesWhetherAFailureIsSilent) {
  const std::string key = "COMPONENT/fw_missing/OpenFailsSilently";
  known(kUnknown, "fw_missing");
  component(kUnknown);
  EXPECT_EQ(errors_.texts.size(), 1u);
  for (const char* const loud : {"0"}) {
    setRegistry(key, loud);
    component(kUnknown);
    EXPECT_EQ(errors_.texts.size(), 2u) << loud;
  }
  for (const char* const silent : {"1", "", "00", "no"}) {
    setRegistry(key, silent);
    component(kUnknown);
    EXPECT_EQ(errors_.texts.size(), 2u) << silent;
  }
}

TEST_F(Manager, SilenceGoesByTheFileNameWithoutExtension) {
  setRegistry("COMPONENT/fw_missing.part/OpenFailsSilently", "1");
  OroString path = tests::testLibrary("fw_missing.part.so");
  manager_->setLibraryPath(kUnknown, KelCString(), path);
  component(kUnknown);
  EXPECT_TRUE(errors_.texts.empty());
}

TEST_F(Manager, NameTooLongForTheSilenceKeyIsCut) {
  const std::string name(600, 'n');
  const std::string key = ("COMPONENT/" + name + "/OpenFailsSilently").substr(0, 255);
  setRegistry(key, "1");
  manager_->setLibraryPath(kUnknown, KelCString(), OroString(name.c_str()));
  component(kUnknown);
  EXPECT_TRUE(errors_.texts.empty());
}

TEST_F(Manager, WithoutRegistryAndErrorServiceAFailureIsQuiet) {
  OroObjectBroker bare(manager_.get(), group("bare"));
  oroSetBroker(&bare);
  known(kUnknown, "fw_missing");
  EXPECT_EQ(component(kUnknown), nullptr);
  EXPECT_TRUE(errors_.texts.empty());
  oroSetBroker(broker_.get());
}

TEST_F(Manager, LibraryWithItsSuffixWrittenOutIsLoaded) {
  OroString path = tests::testLibrary("fw_recorder");
  path.append(OroString(platform::librarySuffix()));
  manager_->setLibraryPath(kRecorder, KelCString(), path);
  EXPECT_NE(component(kRecorder), nullptr);
  EXPECT_TRUE(errors_.texts.empty());
}

TEST_F(Manager, PathThatEndsInADotGetsTheSuffixBehindIt) {
  OroString path = tests::testLibrary("fw_missing.");
  manager_->setLibraryPath(kUnknown, KelCString(), path);
  EXPECT_EQ(component(kUnknown), nullptr);
  ASSERT_EQ(errors_.texts.size(), 1u);
  const std::string name =
      std::string("fw_missing.") + OroString(platform::librarySuffix()).toNarrow() + ";";
  EXPECT_NE(errors_.texts[0].find(name), std::string::npos) << errors_.texts[0];
}

TEST_F(Manager, LibraryFindsAnotherBesideIt) {
  constexpr GUID id = testids::makeId(0x0DE50001);
  known(id, "fw_dependent");
  EXPECT_NE(component(id), nullptr) << (errors_.texts.empty() ? "" : errors_.texts[0]);
}

TEST_F(Manager, ComponentThatCallsBackIsServedOnTheSameThread) {
  FakeComponent component;
  FakeComponent other;
  manager_->registerContainer(kUnknown, KelCString(), new FakeContainer(&other));
  known(kRecorder, "fw_recorder");

  // The broker's object comes from a container whose component asks for another one.
  class Nesting : public FakeContainer {
   public:
    Nesting(IOroComponent* component, KelComponentManager& manager)
        : FakeContainer(component), manager_(manager) {}
    IOroComponent* component() override {
      IOroComponent* found = nullptr;
      EXPECT_TRUE(manager_.getComponent(kUnknown, KelCString(), &found));
      EXPECT_TRUE(manager_.getComponent(kRecorder, KelCString(), &found));
      return FakeContainer::component();
    }
    KelComponentManager& manager_;
  };
  manager_->registerContainer(kGood, KelCString(), new Nesting(&component, *manager_));
  IOroComponent* found = nullptr;
  EXPECT_TRUE(manager_->getComponent(kGood, KelCString(), &found));
  EXPECT_EQ(found, &component);
  EXPECT_EQ(journal_.notes, Notes{"initialise"});
}

TEST_F(Manager, ManyThreadsLoadALibraryOnce) {
  known(kRecorder, "fw_recorder");
  std::vector<std::thread> threads;
  std::vector<IOroComponent*> found(8);
  std::atomic<int> ready = 0;
  for (IOroComponent*& mine : found) {
    threads.emplace_back([&] {
      ++ready;
      while (ready < 8) std::this_thread::yield();
      manager_->getComponent(kRecorder, KelCString(), &mine);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(journal_.notes, Notes{"initialise"});
  ASSERT_NE(found[0], nullptr);
  for (IOroComponent* const each : found) EXPECT_EQ(each, found[0]);
}

// --- Groups

TEST_F(Manager, ComponentHearsItsGroupOnceWhenItIsLoaded) {
  known(kRecorder, "fw_recorder", "alpha");
  component(kRecorder, "alpha");
  component(kRecorder, "alpha");
  EXPECT_EQ(journal_.notes, (Notes{"initialise", "group alpha"}));
  manager_->unloadComponent(kRecorder, group("alpha"));
  component(kRecorder, "alpha");
  ASSERT_GE(journal_.notes.size(), 2u);
  EXPECT_EQ(journal_.notes.back(), "group alpha");
  EXPECT_EQ(*(journal_.notes.end() - 2), "initialise");
}

TEST_F(Manager, GroupsHaveComponentsOfTheirOwn) {
  known(kRecorder, "fw_recorder", "alpha");
  known(kRecorder, "fw_recorder", "beta");
  known(kRecorder, "fw_recorder");
  IOroComponent* const alpha = component(kRecorder, "alpha");
  IOroComponent* const beta = component(kRecorder, "beta");
  IOroComponent* const standard = component(kRecorder);
  EXPECT_NE(alpha, beta);
  EXPECT_NE(alpha, standard);
  EXPECT_NE(beta, standard);
  EXPECT_EQ(journal_.notes,
            (Notes{"initialise", "group alpha", "initialise", "group beta", "initialise"}));
  EXPECT_TRUE(manager_->unloadComponent(kRecorder, group("alpha")));
  EXPECT_EQ(component(kRecorder, "beta"), beta);
}

TEST_F(Manager, NamedGroupsEndFirst) {
  std::string order;
  FakeComponent standard;
  FakeComponent named;
  standard.onShutDown = [&] { order += "default;"; };
  named.onShutDown = [&] { order += "named;"; };
  manager_->registerContainer(kGood, KelCString(), new FakeContainer(&standard));
  manager_->setLibraryPath(kRecorder, group("alpha"), OroString("x"));
  manager_->registerContainer(kGood, group("alpha"), new FakeContainer(&named));
  manager_->shutDownComponents();
  EXPECT_EQ(order, "named;default;");
}

TEST_F(Manager, ComponentsEndInTableOrder) {
  // 131 tables places: by the first word of the id, the newest of a place first.
  std::vector<FakeComponent> components(4);
  std::string order;
  const uint32_t words[] = {5, 3, 5 + 131, 4};
  for (size_t i = 0; i < components.size(); ++i) {
    components[i].onShutDown = [&order, i] { order += std::to_string(i); };
    manager_->registerContainer(testids::makeId(words[i]), KelCString(),
                                new FakeContainer(&components[i]));
  }
  manager_->shutDownComponents();
  EXPECT_EQ(order, "1320");
}

TEST_F(Manager, NamedGroupsAndTheirComponentsHaveSmallTables) {
  // Three places, for groups and for the components of one: both names and both words share one,
  // and the newest of a place comes first.
  std::string order;
  std::vector<std::unique_ptr<FakeComponent>> components;
  for (const char* const name : {"a", "d"}) {
    manager_->setLibraryPath(kUnknown, group(name), OroString("x"));
    for (const uint32_t word : {1u, 4u}) {
      components.push_back(std::make_unique<FakeComponent>());
      const std::string note = name + std::to_string(word) + ";";
      components.back()->onShutDown = [&order, note] { order += note; };
      manager_->registerContainer(testids::makeId(word), group(name),
                                  new FakeContainer(components.back().get()));
    }
  }
  manager_->shutDownComponents();
  EXPECT_EQ(order, "d4;d1;a4;a1;");
}

TEST_F(Manager, ComponentsMayComeAndGoWhileTheyEnd) {
  FakeComponent first;
  FakeComponent second;
  constexpr GUID firstId = testids::makeId(1);
  constexpr GUID secondId = testids::makeId(2);
  first.onShutDown = [&] {
    manager_->unloadComponent(secondId, KelCString());
    for (uint32_t i = 100; i < 400; ++i) {
      manager_->registerContainer(testids::makeId(i), KelCString(), new FakeContainer(nullptr));
    }
  };
  manager_->registerContainer(firstId, KelCString(), new FakeContainer(&first));
  manager_->registerContainer(secondId, KelCString(), new FakeContainer(&second));
  manager_->shutDownComponents();
  EXPECT_EQ(first.shutDowns, 1);
  EXPECT_EQ(second.shutDowns, 0);
}

// --- The kit's component

TEST_F(Manager, ComponentOfTheKitKnowsItsModule) {
  known(kGood, "fw_good");
  broker_->registerClass(testids::kPlainClass, kGood, {}, KelCString("KelProbe"));
  void* slot = nullptr;
  ASSERT_EQ(broker_->createObject(testids::kPlainClass, KelCString("ITestProbe"), &slot), 1);
  const IPtr<ITestProbe> probe(static_cast<ITestProbe*>(slot));
  KelCString name;
  KelCString groupName;
  GUID id;
  probe->componentName(name);
  probe->groupName(groupName);
  probe->componentId(id);
  EXPECT_TRUE(name == "good");
  EXPECT_TRUE(groupName.isEmpty());
  EXPECT_EQ(id, kGood);
  EXPECT_EQ(probe->startedCalls(), 1);
  EXPECT_EQ(probe->stoppingCalls(), 0);
  manager_->shutDownComponents();
  manager_->shutDownComponents();
  EXPECT_EQ(probe->stoppingCalls(), 1);
  EXPECT_STREQ(oroModuleIdentity().componentName.text(), "cowlcomponent");  // the host's own
}

TEST_F(Manager, ComponentOfTheKitSharesAndMakesAsItsTableSays) {
  known(kGood, "fw_kept");
  for (const GUID& id : {testids::kPlainClass, testids::kSharedClass}) {
    broker_->registerClass(id, kGood, {}, KelCString("KelProbe"));
  }
  const KelCString name("ITestProbe");
  void* a = nullptr;
  void* b = nullptr;
  broker_->createObject(testids::kPlainClass, name, &a);
  broker_->createObject(testids::kPlainClass, name, &b);
  const IPtr<ITestProbe> first(static_cast<ITestProbe*>(a));
  const IPtr<ITestProbe> second(static_cast<ITestProbe*>(b));
  EXPECT_NE(first.get(), second.get());

  broker_->createObject(testids::kSharedClass, name, &a);
  { const IPtr<ITestProbe> passing(static_cast<ITestProbe*>(a)); }  // must not end it
  broker_->createObject(testids::kSharedClass, name, &b);
  EXPECT_EQ(a, b);
  EXPECT_EQ(static_cast<ITestProbe*>(b)->refCount(), 1);  // the component's own

  broker_->registerInterface(name, testids::kSharedClass);
  void* service = nullptr;
  EXPECT_EQ(broker_->getService(name, &service), 1);
  EXPECT_EQ(service, a);
  EXPECT_EQ(static_cast<ITestProbe*>(a)->refCount(), 2);  // and the broker's
  EXPECT_EQ(static_cast<ITestProbe*>(a)->probeService(), a);
  keepForGood();
}

TEST_F(Manager, ClassOfTheKitThatCannotBeMadeIsAFailureOfTheBroker) {
  known(kGood, "fw_good");
  for (const GUID& id : {testids::kNullClass, testids::kThrowingClass, kUnknown}) {
    broker_->registerClass(id, kGood, {}, KelCString("KelNothing"));
    void* found = nullptr;
    EXPECT_EQ(broker_->createObject(id, KelCString("ITestProbe"), &found), 0);
    EXPECT_EQ(broker_->getLastStatus(), 0);
  }
}

TEST_F(Manager, ModuleOfTheKitFollowsItsGroup) {
  OroObjectBroker* const alpha = broker_->groupBroker(group("alpha"), true);
  known(kGood, "fw_kept", "alpha");
  alpha->registerClass(testids::kPlainClass, kGood, {}, KelCString("KelProbe"));
  alpha->registerClass(testids::kSharedClass, kGood, {}, KelCString("KelProbe"));
  const KelCString name("ITestProbe");
  alpha->registerInterface(name, testids::kSharedClass);
  void* slot = nullptr;
  ASSERT_EQ(alpha->createObject(testids::kPlainClass, name, &slot), 1);
  const IPtr<ITestProbe> probe(static_cast<ITestProbe*>(slot));
  KelCString groupName;
  probe->groupName(groupName);
  EXPECT_TRUE(groupName == "alpha");
  ITestProbe* const service = probe->probeService();  // only the group has one
  EXPECT_NE(service, nullptr);
  EXPECT_NE(service, probe.get());
  const SPtr<ITestProbe> ofHost;
  EXPECT_FALSE(ofHost);
  keepForGood();
}

// --- Roles and places

TEST_F(Manager, AnswersToItsNamesAlone) {
  EXPECT_EQ(oroQueryClass<KelComponentManager>(manager_.get()), manager_.get());
  EXPECT_NE(oroQuery<IOroComponentManager>(manager_.get()), nullptr);
  EXPECT_NE(oroQuery<IOroComponentManagerV2>(manager_.get()), nullptr);
  EXPECT_NE(oroQuery<IOroComponentManagerV3>(manager_.get()), nullptr);
  EXPECT_NE(oroQuery<IOroComponentLoader>(manager_.get()), nullptr);
  EXPECT_NE(oroQuery<IOroComponentUnloader>(manager_.get()), nullptr);
  EXPECT_EQ(oroQuery<IOroComponent>(manager_.get()), nullptr);
  EXPECT_STREQ(manager_->getClassName(), "KelComponentManager");
}

TEST(ManagerSlots, StandInTheirOrder) {
  using tests::slotNumber;
  EXPECT_EQ(slotNumber(&IOroComponentManager::getComponent), 1);
  EXPECT_EQ(slotNumber(&IOroComponentManager::registerContainer), 2);
  EXPECT_EQ(slotNumber(&IOroComponentManager::setLibraryPath), 3);
  EXPECT_EQ(slotNumber(&IOroComponentManager::setBroker), 4);
  EXPECT_EQ(slotNumber(&IOroComponentManager::getLastStatus), 5);
  EXPECT_EQ(slotNumber(&IOroComponentManagerV2::getComponentName) -
                slotNumber(&IOroComponentManagerV2::getLibraryPath),
            1);
  EXPECT_GT(slotNumber(&IOroComponentManagerV2::getLibraryPath),
            slotNumber(&IOroComponentManager::getLastStatus));
  EXPECT_EQ(slotNumber(&IOroComponentManagerV3::getStaticLinkage) -
                slotNumber(&IOroComponentManagerV3::setStaticLinkage),
            1);
  EXPECT_GT(slotNumber(&IOroComponentManagerV3::setStaticLinkage),
            slotNumber(&IOroComponentManagerV2::getComponentName));
  EXPECT_EQ(slotNumber(&IOroComponentLoader::registerComponent), 1);
  EXPECT_EQ(slotNumber(&IOroComponentUnloader::unloadComponent), 1);
}

TEST(ComponentSlots, StandInTheirOrder) {
  using tests::slotNumber;
  EXPECT_EQ(slotNumber(&IOroComponent::initialise), 1);
  EXPECT_EQ(slotNumber(&IOroComponent::shutDown), 2);
  EXPECT_EQ(slotNumber(&IOroComponent::getClassObject), 3);
  EXPECT_EQ(slotNumber(&IOroComponent::unusedSlot4), 4);
  EXPECT_EQ(slotNumber(&IOroComponent::unusedSlot5), 5);
  EXPECT_EQ(slotNumber(&IOroComponentContainer::component), 1);
  EXPECT_EQ(slotNumber(&IOroCompInternal::setGroupName), 1);
  EXPECT_EQ(slotNumber(&IOroInitializer::initialize), 1);
}

}  // namespace
