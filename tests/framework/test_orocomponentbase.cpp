#include "components/kit/orocomponentbase.h"

#include <gtest/gtest.h>

#include "components/kit/entrypoint.h"
#include "framework/orodynamiclibrary.h"
#include "framework/oroobjectbroker.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/testaccess.h"
#include "tests/framework/fakes.h"
#include "tests/framework/libs/testids.h"
#include "tests/framework/testlibrary.h"

namespace {

using tests::FakeObject;
using tests::idOf;

constexpr GUID kComponent = idOf(0xC0);
constexpr GUID kNew = idOf(1);
constexpr GUID kShared = idOf(2);
constexpr GUID kNone = idOf(3);

IOroUnknown* makeNone() { return nullptr; }

constexpr OroClassEntry kClasses[] = {
    {kNew, FakeObject::className(), OroSharing::eachNew, oroMake<FakeObject>},
    {kShared, FakeObject::className(), OroSharing::shared, oroMake<FakeObject>},
    {kNone, "KelNone", OroSharing::shared, makeNone},
};

int started = 0;
int stopping = 0;
IOroObjBroker* brokerAtStart = nullptr;

const OroComponentRecord kRecord{"base", kComponent, kClasses,
                                 [] {
                                   ++started;
                                   brokerAtStart = oroBroker();
                                 },
                                 [] { ++stopping; }};

// A component in a module that had no broker before: this program.
class ComponentBase : public testing::Test {
 protected:
  ComponentBase() {
    started = 0;
    stopping = 0;
    FakeObject::alive = 0;
  }
  ~ComponentBase() override { testaccess::resetModule(); }

  int32_t ask(const GUID& classId) { return component_.getClassObject(classId, &object_); }

  OroObjectBroker broker_{nullptr};
  OroComponentBase component_{kRecord};
  IOroUnknown* object_ = nullptr;
};

TEST_F(ComponentBase, StartMakesBrokerAndIdentityKnownFirst) {
  component_.initialise(&broker_);
  EXPECT_EQ(started, 1);
  EXPECT_EQ(brokerAtStart, &broker_);
  EXPECT_STREQ(oroModuleIdentity().componentName.text(), "base");
  EXPECT_EQ(oroModuleIdentity().componentId, kComponent);
  component_.setGroupName(KelCString("alpha"));
  EXPECT_STREQ(oroModuleIdentity().groupName.text(), "alpha");
}

TEST_F(ComponentBase, SecondComponentOfTheModuleKnowsItsGroupToo) {
  component_.initialise(&broker_);
  component_.setGroupName(KelCString("alpha"));
  OroComponentBase second(kRecord);
  second.initialise(&broker_);
  second.setGroupName(KelCString("beta"));
  EXPECT_STREQ(oroModuleIdentity().groupName.text(), "beta");
}

TEST_F(ComponentBase, NameOfTheGroupIsKeptAsACopy) {
  component_.initialise(&broker_);
  char text[] = "alpha";
  component_.setGroupName(KelCString::borrow(text));
  text[0] = 'x';
  EXPECT_STREQ(oroModuleIdentity().groupName.text(), "alpha");
}

TEST_F(ComponentBase, EndIsToldOnceAndOnlyAfterAStart) {
  component_.shutDown();
  EXPECT_EQ(stopping, 0);
  component_.initialise(&broker_);
  component_.shutDown();
  component_.shutDown();
  EXPECT_EQ(stopping, 1);
}

TEST_F(ComponentBase, RecordNeedsNoCalls) {
  const OroComponentRecord record{"bare", kComponent, {}};
  OroComponentBase bare(record);
  bare.initialise(&broker_);
  bare.shutDown();
  EXPECT_EQ(bare.getClassObject(kNew, &object_), 0);
}

TEST_F(ComponentBase, NewObjectsComeUncountedAndBelongToTheCaller) {
  EXPECT_EQ(ask(kNew), 1);
  IOroUnknown* const first = object_;
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->refCount(), 0);
  EXPECT_EQ(ask(kNew), 1);
  EXPECT_NE(object_, first);
  for (IOroUnknown* const each : {first, object_}) IPtr<IOroUnknown>(each).get();
  EXPECT_EQ(FakeObject::alive, 0);
}

TEST_F(ComponentBase, SharedObjectIsOneAndTheComponentsOwn) {
  EXPECT_EQ(ask(kShared), 2);
  IOroUnknown* const first = object_;
  EXPECT_EQ(first->refCount(), 1);
  { const IPtr<IOroUnknown> passing(first); }
  EXPECT_EQ(FakeObject::alive, 1);
  EXPECT_EQ(ask(kShared), 2);
  EXPECT_EQ(object_, first);
}

TEST_F(ComponentBase, SharedObjectsOutliveTheEndOfWorkButNotTheComponent) {
  auto* const component = new OroComponentBase(kRecord);
  component->initialise(&broker_);
  component->getClassObject(kShared, &object_);
  component->shutDown();
  EXPECT_EQ(FakeObject::alive, 1);
  delete component;
  EXPECT_EQ(FakeObject::alive, 0);
}

TEST_F(ComponentBase, UnknownClassesAndFailuresGiveNull) {
  for (const GUID& id : {kNone, idOf(99)}) {
    object_ = &component_;
    EXPECT_EQ(ask(id), 0);
    EXPECT_EQ(object_, nullptr);
  }
  EXPECT_EQ(component_.getClassObject(kNew, nullptr), 0);
}

TEST_F(ComponentBase, AnswersToItsNamesAlone) {
  EXPECT_NE(oroQuery<IOroComponent>(&component_), nullptr);
  EXPECT_NE(oroQuery<IOroCompInternal>(&component_), nullptr);
  EXPECT_EQ(oroQuery<IOroObserver>(&component_), nullptr);
  EXPECT_STREQ(component_.getClassName(), "OroComponentBase");
  EXPECT_EQ(component_.refCount(), 0);
}

TEST(EntryPointOfTheKit, FillsBothOutputsAndRefusesNull) {
  OroDynamicLibrary library;
  ASSERT_TRUE(library.load(tests::testLibrary("fw_good"), OroString()));
  const auto entry = reinterpret_cast<decltype(&EntryPoint)>(library.symbol("EntryPoint"));
  ASSERT_NE(entry, nullptr);
  int32_t version = 0;
  IOroComponent* component = nullptr;
  EXPECT_EQ(entry(nullptr, &component), 0);
  EXPECT_EQ(entry(&version, nullptr), 0);
  EXPECT_EQ(component, nullptr);
  EXPECT_EQ(entry(&version, &component), 1);
  EXPECT_EQ(version, 100);
  ASSERT_NE(component, nullptr);
  EXPECT_EQ(component->refCount(), 1);
  { const IPtr<IOroComponent> passing(component); }  // must not end it
  delete static_cast<IOroUnknown*>(component);
  library.unload();
}

}  // namespace
