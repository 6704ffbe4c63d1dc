#include "framework/oroobjectbroker.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "orobasictypes/sptr.h"
#include "tests/framework/brokerfixture.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::FakeObject;
using tests::FakeObserver;
using tests::idOf;
using tests::IFakeService;

constexpr const char* kService = "IFakeService";

class Broker : public tests::BrokerFixture {
 protected:
  IFakeService* service() {
    void* found = nullptr;
    broker_->getService(name(kService), &found);
    return static_cast<IFakeService*>(found);
  }
};

// --- Services

TEST_F(Broker, PublishedServiceIsFound) {
  FakeObject object(7);
  object.addRef();
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_EQ(broker_->registerService(name(kService), &object), 1);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_EQ(object.refCount(), 2);
  void* found = nullptr;
  EXPECT_EQ(broker_->getService(name(kService), &found), 1);
  EXPECT_EQ(found, static_cast<IFakeService*>(&object));
  EXPECT_EQ(object.refCount(), 2);  // borrowed
  broker_.reset();
  EXPECT_EQ(object.refCount(), 1);
}

TEST_F(Broker, TakenNameKeepsTheFirstObject) {
  FakeObject first(1);
  FakeObject second(2);
  first.addRef();
  second.addRef();
  EXPECT_EQ(broker_->registerService(name(kService), &first), 1);
  EXPECT_EQ(broker_->registerService(name(kService), &second), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1004);
  EXPECT_EQ(second.refCount(), 1);
  EXPECT_EQ(service()->number(), 1);
  broker_.reset();
}

TEST_F(Broker, NullObjectIsNotPublished) {
  EXPECT_EQ(broker_->registerService(name(kService), nullptr), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1003);
  EXPECT_EQ(service(), nullptr);
}

TEST_F(Broker, UnknownServiceGivesNullAndTheStatus) {
  void* found = untouched();
  EXPECT_EQ(broker_->getService(name("INothing"), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
  EXPECT_EQ(found, nullptr);
}

TEST_F(Broker, NullOutputIsRefusedEverywhere) {
  EXPECT_EQ(broker_->getService(name(kService), nullptr), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1003);
  broker_->registerService(name("IFakeOther"), new FakeObject);
  EXPECT_EQ(broker_->createObject(kClass, name(kService), nullptr), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1003);
  broker_->registerService(name("IFakeThird"), new FakeObject);
  EXPECT_EQ(broker_->createInstance(kClass, name(kService), nullptr), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1003);
}

TEST_F(Broker, ServiceIsAskedForItsNameUntilItAnswers) {
  auto* const object = new FakeObject;
  broker_->registerService(name(kService), object);
  EXPECT_EQ(object->queries, 0);
  EXPECT_EQ(service(), object);
  EXPECT_EQ(service(), object);
  EXPECT_EQ(object->queries, 1);
  auto* const mute = new FakeObject;
  broker_->registerService(name("IFakeOther"), mute);
  void* found = nullptr;
  broker_->getService(name("IFakeOther"), &found);
  broker_->getService(name("IFakeOther"), &found);
  EXPECT_EQ(mute->queries, 2);
}

TEST_F(Broker, NameIsToldByItsBytesAndNotByItsAddress) {
  broker_->registerService(name(kService), new FakeObject(1));
  broker_->registerService(name(""), new FakeObject(2));
  char text[32] = "IFakeService";
  void* found = nullptr;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(broker_->getService(name(text), &found), 1);
    EXPECT_EQ(static_cast<IFakeService*>(found)->number(), 1);
  }
  text[1] = 'f';
  EXPECT_EQ(broker_->getService(name(text), &found), 0);
  EXPECT_EQ(found, nullptr);
  text[0] = '\0';
  EXPECT_EQ(broker_->getService(name(text), &found), 0);  // published, but answers to no such name
  EXPECT_EQ(broker_->getService(KelCString(), &found), 0);
}

TEST_F(Broker, NamesOfAllLengthsAreToldApart) {
  FakeObject object;
  object.addRef();
  for (size_t length = 0; length <= 40; ++length) {
    const std::string text(length, 'x');
    const std::string other = text + "y";
    EXPECT_EQ(broker_->registerService(name(text.c_str()), &object), 1) << text;
    EXPECT_EQ(broker_->registerService(name(text.c_str()), &object), 0) << text;
    EXPECT_EQ(broker_->registerService(name(other.c_str()), &object), 1) << other;
  }
  broker_.reset();
  EXPECT_EQ(object.refCount(), 1);
}

TEST_F(Broker, ServiceThatDoesNotAnswerItsNameIsNone) {
  provide(1, [] { return new FakeObject; });
  broker_->registerInterface(name("IFakeOther"), kClass);
  broker_->registerService(name("IFakeOther"), new FakeObject);
  void* found = untouched();
  EXPECT_EQ(broker_->getService(name("IFakeOther"), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(component_.requests, 0);  // the default class is not tried
}

TEST_F(Broker, NameOfAServiceIsKeptAsACopy) {
  std::string text = kService;
  broker_->registerService(KelCString::borrow(text.c_str()), new FakeObject(3));
  text = "gone";
  ASSERT_NE(service(), nullptr);
  EXPECT_EQ(service()->number(), 3);
}

TEST_F(Broker, NullNameIsANameLikeAnyOther) {
  FakeObject object;
  provide(1, [&] { return &object; });
  void* found = untouched();
  EXPECT_EQ(broker_->getService(KelCString(), &found), 0);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(broker_->createObject(kClass, KelCString(), &found), 0);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
}

// --- Default classes

TEST_F(Broker, SharedObjectOfTheDefaultClassIsPublished) {
  FakeObject object(5);
  object.addRef();
  provide(2, [&] { return &object; });
  broker_->registerInterface(name(kService), kClass);
  EXPECT_EQ(service(), &object);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_EQ(object.refCount(), 2);
  EXPECT_EQ(service(), &object);
  EXPECT_EQ(component_.requests, 1);
  broker_.reset();
}

TEST_F(Broker, SharedObjectOfTheDefaultClassIsPublishedByItsClassIdToo) {
  FakeObject object;
  object.addRef();
  provide(2, [&] { return &object; });
  broker_->registerInterface(name(kService), kClass);
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(object.refCount(), 2);
  EXPECT_EQ(service(), &object);
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(component_.requests, 1);
  broker_.reset();
}

TEST_F(Broker, NewObjectIsNeverPublished) {
  FakeObject object;
  object.addRef();
  provide(1, [&] { return &object; });
  broker_->registerInterface(name(kService), kClass);
  EXPECT_EQ(service(), &object);
  EXPECT_EQ(service(), &object);
  EXPECT_EQ(component_.requests, 2);
  EXPECT_EQ(object.refCount(), 1);
}

TEST_F(Broker, SharedObjectOfAnotherClassIsNotPublished) {
  FakeObject object;
  object.addRef();
  provide(2, [&] { return &object; });
  broker_->registerInterface(name(kService), kOtherClass);
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(found, static_cast<IFakeService*>(&object));
  EXPECT_EQ(object.refCount(), 1);
}

TEST_F(Broker, FirstDefaultClassOfAnInterfaceStays) {
  GUID found;
  EXPECT_FALSE(broker_->classOfInterface(name(kService), found));
  EXPECT_EQ(broker_->registerInterface(name(kService), kClass), 1);
  EXPECT_EQ(broker_->registerInterface(name(kService), kOtherClass), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1004);
  ASSERT_TRUE(broker_->classOfInterface(name(kService), found));
  EXPECT_EQ(found, kClass);
}

TEST_F(Broker, UnregisteredInterfaceLeavesItsService) {
  broker_->registerInterface(name(kService), kClass);
  broker_->registerService(name(kService), new FakeObject(4));
  EXPECT_EQ(broker_->unregisterInterface(name(kService)), 1);
  EXPECT_EQ(broker_->unregisterInterface(name(kService)), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
  GUID found;
  EXPECT_FALSE(broker_->classOfInterface(name(kService), found));
  EXPECT_EQ(service()->number(), 4);
}

TEST_F(Broker, LookUpsInTablesTouchNoLibrary) {
  provide(1, [] { return new FakeObject; });
  broker_->registerInterface(name(kService), kClass);
  GUID found;
  EXPECT_EQ(broker_->getComponentId(kClass, found), 1);
  EXPECT_EQ(found, kComponent);
  EXPECT_EQ(broker_->getComponentId(kOtherClass, found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  EXPECT_TRUE(broker_->classOfInterface(name(kService), found));
  EXPECT_TRUE(manager_.groups.empty());
}

// --- Making objects

TEST_F(Broker, ClassWithNewObjectsGivesAnotherEachTime) {
  provide(1, [] { return new FakeObject; });
  void* first = nullptr;
  void* second = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &first), 1);
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &second), 1);
  EXPECT_NE(first, second);
  const IPtr<IFakeService> a(static_cast<IFakeService*>(first));
  const IPtr<IFakeService> b(static_cast<IFakeService*>(second));
  EXPECT_EQ(a->refCount(), 1);  // it came with a count of 0
}

TEST_F(Broker, DefaultClassOfAPublishedServiceGivesTheService) {
  provide(1, [] { return new FakeObject(1); });
  broker_->registerInterface(name(kService), kClass);
  broker_->registerService(name(kService), new FakeObject(9));
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(static_cast<IFakeService*>(found)->number(), 9);
  EXPECT_EQ(component_.requests, 0);
}

TEST_F(Broker, OtherClassBesideAPublishedServiceIsMade) {
  provide(1, [] { return new FakeObject(1); });
  broker_->registerInterface(name(kService), kOtherClass);
  broker_->registerService(name(kService), new FakeObject(9));
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  const IPtr<IFakeService> made(static_cast<IFakeService*>(found));
  EXPECT_EQ(made->number(), 1);
}

TEST_F(Broker, ServiceOrClassObjectThatDoesNotAnswerIsStillASuccess) {
  broker_->registerInterface(name("IFakeOther"), kClass);
  broker_->registerService(name("IFakeOther"), new FakeObject);
  void* found = untouched();
  EXPECT_EQ(broker_->createObject(kClass, name("IFakeOther"), &found), 1);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_EQ(found, nullptr);
  broker_->setClassObject(kOtherClass, new FakeObject);
  found = untouched();
  EXPECT_EQ(broker_->createObject(kOtherClass, name("IFakeOther"), &found), 1);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_EQ(found, nullptr);
}

TEST_F(Broker, EarlyFailureLeavesTheOutputAlone) {
  void* found = untouched();
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  EXPECT_EQ(found, untouched());
  EXPECT_EQ(broker_->createInstance(kClass, name(kService), &found), 0);
  EXPECT_EQ(found, untouched());
}

TEST_F(Broker, WithoutAManagerNothingIsMade) {
  OroObjectBroker broker(nullptr, name("side"));
  broker.registerClass(kClass, kComponent, {}, name("KelClass"));
  void* found = untouched();
  EXPECT_EQ(broker.createObject(kClass, name(kService), &found), 0);
  EXPECT_EQ(broker.getLastStatus(), 1001);
  EXPECT_EQ(found, untouched());
  EXPECT_FALSE(broker.classSupports(kClass, name(kService)));
  EXPECT_EQ(broker.componentManager(), nullptr);
}

TEST_F(Broker, StatusOfAFailedComponentIsPassedOn) {
  provide(1, [] { return new FakeObject; });
  manager_.components.clear();
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 3001);
}

// Stands for a thread that succeeds between a failure and the reading of its status.
TEST_F(Broker, FailureStaysOneWhenItsStatusWasOverwritten) {
  class Interrupted : public OroObjectBroker {
   public:
    using OroObjectBroker::OroObjectBroker;
    int32_t createInstance(const GUID& id, const KelCString& interfaceName, void** out) override {
      const int32_t result = OroObjectBroker::createInstance(id, interfaceName, out);
      registerInterface(KelCString("IFakeOther"), id);
      return result;
    }
  };
  Interrupted broker(&manager_, name("side"));
  broker.registerInterface(name(kService), kClass);
  void* found = untouched();
  EXPECT_EQ(broker.getService(name(kService), &found), 0);
  EXPECT_EQ(broker.getLastStatus(), 1001);
  EXPECT_EQ(found, nullptr);
}

TEST_F(Broker, FailedComponentStaysOneWhenTheManagersStatusWasOverwritten) {
  class Interrupted : public tests::FakeManager {
   public:
    int32_t getLastStatus() override { return 1; }
  };
  Interrupted manager;
  OroObjectBroker broker(&manager, name("side"));
  broker.registerClass(kClass, kComponent, {}, name("KelClass"));
  void* found = untouched();
  EXPECT_EQ(broker.createObject(kClass, name(kService), &found), 0);
  EXPECT_EQ(broker.getLastStatus(), 1001);
  EXPECT_EQ(found, untouched());
}

TEST_F(Broker, ComponentThatDidNotLoadHasNoObject) {
  provide(1, [] { return new FakeObject; });
  manager_.components[kComponent] = nullptr;  // known and true, but nothing came up
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  EXPECT_FALSE(broker_->classSupports(kClass, name(kService)));
}

TEST_F(Broker, NullObjectIsAFailureWhateverTheComponentSays) {
  for (const int32_t status : {1, 2}) {
    provide(status, [] { return nullptr; });
    void* found = nullptr;
    EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 0);
    EXPECT_EQ(broker_->getLastStatus(), 1001) << status;
  }
}

TEST_F(Broker, CodeOfAComponentThatRefusesIsPassedOn) {
  FakeObject object;
  object.addRef();
  for (const int32_t status : {0, 3, -1, 1005}) {
    for (FakeObject* const given : {&object, static_cast<FakeObject*>(nullptr)}) {
      provide(status, [given] { return given; });
      void* found = untouched();
      EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 0);
      EXPECT_EQ(broker_->getLastStatus(), status);
      EXPECT_EQ(found, untouched());
    }
  }
}

TEST_F(Broker, UnsupportedInterfaceIsAFailureAndTheObjectStays) {
  FakeObject object;  // with a count of 0: it may be the component's own
  provide(1, [&] { return &object; });
  void* found = untouched();
  EXPECT_EQ(broker_->createObject(kClass, name("IFakeOther"), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(FakeObject::alive, 1);
}

TEST_F(Broker, UnsupportedInterfaceCountsAsRegisteredFromThenOn) {
  FakeObject object;
  provide(1, [&] { return &object; });
  void* found = nullptr;
  EXPECT_EQ(broker_->getService(name("IFakeOther"), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
  broker_->createObject(kClass, name("IFakeOther"), &found);
  GUID standard = kClass;
  EXPECT_TRUE(broker_->classOfInterface(name("IFakeOther"), standard));
  EXPECT_TRUE(standard.isNull());
  EXPECT_EQ(broker_->getService(name("IFakeOther"), &found), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  EXPECT_EQ(broker_->registerInterface(name("IFakeOther"), kClass), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1004);
}

TEST_F(Broker, ComponentMayAskTheBrokerWhileItMakesAnObject) {
  broker_->registerService(name("IFakeOther"), new FakeObject);
  broker_->registerClass(kOtherClass, kComponent, {}, name("KelOther"));
  IPtr<IFakeService> inner;
  bool nested = false;
  provide(1, [&]() -> IOroUnknown* {
    if (!nested) {
      nested = true;
      void* found = nullptr;
      EXPECT_EQ(broker_->createObject(kOtherClass, name(kService), &found), 1);
      inner = static_cast<IFakeService*>(found);
    }
    return new FakeObject;
  });
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  const IPtr<IFakeService> outer(static_cast<IFakeService*>(found));
  EXPECT_TRUE(inner);
  EXPECT_NE(inner.get(), outer.get());
}

// Replaces the creation step.
class OwnCreation : public OroObjectBroker {
 public:
  using OroObjectBroker::OroObjectBroker;
  int32_t createInstance(const GUID&, const KelCString& interfaceName, void** out) override {
    ++calls;
    object.queryInterface(interfaceName.c_str(), out);
    return 1;
  }
  FakeObject object;
  int calls = 0;
};

TEST_F(Broker, CreationStepCanBeReplaced) {
  OwnCreation broker(nullptr, name("side"));
  broker.registerInterface(name(kService), kClass);
  void* found = nullptr;
  EXPECT_EQ(broker.getService(name(kService), &found), 1);
  EXPECT_EQ(found, static_cast<IFakeService*>(&broker.object));
  EXPECT_EQ(broker.createObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(broker.calls, 2);
}

// --- Class objects

TEST_F(Broker, ClassObjectTakesThePlaceOfTheComponents) {
  provide(1, [] { return new FakeObject(1); });
  auto* const object = new FakeObject(8);
  EXPECT_EQ(broker_->setClassObject(kClass, object), 1);
  EXPECT_EQ(object->refCount(), 1);
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(static_cast<IFakeService*>(found)->number(), 8);
  EXPECT_EQ(component_.requests, 0);
}

TEST_F(Broker, ServiceLookUpPassesClassObjectsBy) {
  provide(1, [] { return new FakeObject(1); });
  broker_->registerInterface(name(kService), kClass);
  broker_->setClassObject(kClass, new FakeObject(8));
  const IPtr<IFakeService> made(service());
  EXPECT_EQ(made->number(), 1);
}

TEST_F(Broker, SettingTheSameClassObjectAgainKeepsIt) {
  auto* const object = new FakeObject;
  broker_->setClassObject(kClass, object);
  broker_->setClassObject(kClass, object);
  EXPECT_EQ(FakeObject::alive, 1);
  EXPECT_EQ(object->refCount(), 1);
  broker_->setClassObject(kClass, new FakeObject);
  EXPECT_EQ(FakeObject::alive, 1);  // the first one went
}

TEST_F(Broker, RemovedClassObjectIsReleased) {
  EXPECT_EQ(broker_->removeClassObject(kClass), 1001);  // the status itself, unlike the others
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  broker_->setClassObject(kClass, new FakeObject);
  EXPECT_EQ(broker_->removeClassObject(kClass), 1);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_EQ(FakeObject::alive, 0);
  EXPECT_EQ(broker_->removeClassObject(kClass), 1001);
}

TEST_F(Broker, NullClassObjectIsAnEntryWithoutAnObject) {
  provide(1, [] { return new FakeObject(1); });
  broker_->setClassObject(kClass, new FakeObject(8));
  EXPECT_EQ(broker_->setClassObject(kClass, nullptr), 1);
  EXPECT_EQ(FakeObject::alive, 0);
  void* found = nullptr;
  EXPECT_EQ(broker_->createObject(kClass, name(kService), &found), 1);
  const IPtr<IFakeService> made(static_cast<IFakeService*>(found));
  EXPECT_EQ(made->number(), 1);
  EXPECT_EQ(broker_->removeClassObject(kClass), 1);
}

// --- What could be had

TEST_F(Broker, HasServiceTellsWhatIsPublished) {
  EXPECT_FALSE(broker_->hasService(name(kService)));
  broker_->registerService(name(kService), new FakeObject);
  EXPECT_TRUE(broker_->hasService(name(kService)));
  broker_->registerService(name("IFakeOther"), new FakeObject);
  EXPECT_FALSE(broker_->hasService(name("IFakeOther")));
}

TEST_F(Broker, HasServiceTriesTheDefaultClassAndPublishesNothing) {
  FakeObject object;
  object.addRef();
  provide(2, [&] { return &object; });
  broker_->registerInterface(name(kService), kClass);
  EXPECT_TRUE(broker_->hasService(name(kService)));
  EXPECT_EQ(component_.requests, 1);
  EXPECT_EQ(object.refCount(), 1);
  broker_->registerInterface(name("IFakeOther"), kClass);
  EXPECT_FALSE(broker_->hasService(name("IFakeOther")));
}

TEST_F(Broker, SupportIsTriedOnClassObjectThenOnTheComponentsObject) {
  EXPECT_FALSE(broker_->classSupports(kClass, name(kService)));
  broker_->setClassObject(kClass, new FakeObject);
  EXPECT_TRUE(broker_->classSupports(kClass, name(kService)));
  EXPECT_FALSE(broker_->classSupports(kClass, name("IFakeOther")));
  EXPECT_EQ(component_.requests, 0);
  broker_->removeClassObject(kClass);
  FakeObject object;
  provide(1, [&] { return &object; });
  EXPECT_TRUE(broker_->classSupports(kClass, name(kService)));
  component_.status = 7;
  EXPECT_FALSE(broker_->classSupports(kClass, name(kService)));
}

TEST_F(Broker, QuestionsLeaveTheStatusAlone) {
  FakeObject object;
  provide(1, [&] { return &object; });
  void* found = nullptr;
  broker_->getService(name("INothing"), &found);
  ASSERT_EQ(broker_->getLastStatus(), 1002);
  GUID id;
  int32_t count = 1;
  broker_->classSupports(kClass, name(kService));
  broker_->hasService(name("INothing"));
  broker_->classOfInterface(name("INothing"), id);
  broker_->groupBroker(name("g"), true);
  broker_->classRegistration();
  broker_->componentManager();
  broker_->countUp(&count);
  broker_->countDown(&count);
  EXPECT_EQ(broker_->getLastStatus(), 1002);
}

TEST_F(Broker, OtherOperationsStoreTheirStatus) {
  const auto spoil = [&] {
    void* found = nullptr;
    broker_->getService(name("INothing"), &found);
    ASSERT_EQ(broker_->getLastStatus(), 1002);
  };
  GUID id;
  spoil();
  broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
  EXPECT_EQ(broker_->getLastStatus(), 1);
  spoil();
  broker_->getComponentId(kClass, id);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  spoil();
  broker_->setClassObject(kClass, nullptr);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  spoil();
  broker_->removeClassObject(kClass);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  spoil();
  broker_->registerInterface(name(kService), kClass);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  spoil();
  broker_->unregisterInterface(name(kService));
  EXPECT_EQ(broker_->getLastStatus(), 1);
}

// --- Classes

TEST_F(Broker, FirstRegistrationOfAClassStays) {
  EXPECT_EQ(broker_->registerClass(kClass, kComponent, {}, name("KelFirst")), 1);
  EXPECT_EQ(broker_->registerClass(kClass, idOf(0xC1), {}, name("KelSecond")), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1005);
  GUID found;
  broker_->getComponentId(kClass, found);
  EXPECT_EQ(found, kComponent);
}

TEST_F(Broker, UnregisteredClassTellsOnlyWhetherADefaultWent) {
  EXPECT_EQ(broker_->unregisterClass(kClass), 0);
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  GUID found;
  broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
  EXPECT_EQ(broker_->unregisterClass(kClass), 0);  // gone, but no interface named it
  EXPECT_EQ(broker_->getLastStatus(), 1001);
  EXPECT_EQ(broker_->getComponentId(kClass, found), 0);

  broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
  broker_->registerInterface(name(kService), kClass);
  EXPECT_EQ(broker_->unregisterClass(kClass), 1);
  EXPECT_EQ(broker_->getLastStatus(), 1);
  EXPECT_FALSE(broker_->classOfInterface(name(kService), found));
}

TEST_F(Broker, UnregisteredClassTakesAllItsInterfacesAndNoOthers) {
  broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
  constexpr int count = 300;
  for (int i = 0; i < count; ++i) {
    const std::string text = "IFake" + std::to_string(i);
    broker_->registerInterface(name(text.c_str()), i % 2 == 0 ? kClass : kOtherClass);
  }
  EXPECT_EQ(broker_->unregisterClass(kClass), 1);
  GUID found;
  for (int i = 0; i < count; ++i) {
    const std::string text = "IFake" + std::to_string(i);
    EXPECT_EQ(broker_->classOfInterface(name(text.c_str()), found), i % 2 != 0) << i;
  }
}

TEST_F(Broker, TagsMayBeManyOrNone) {
  const KelCStringSet tags{KelCString("one"), KelCString("two"), KelCString()};
  EXPECT_EQ(broker_->registerClass(kClass, kComponent, tags, name("KelClass")), 1);
  EXPECT_EQ(broker_->registerClass(kOtherClass, kComponent, {}, KelCString()), 1);
}

// --- Counting

TEST_F(Broker, CountsGoUpAndDown) {
  int32_t count = 0;
  broker_->countUp(&count);
  broker_->countUp(&count);
  EXPECT_EQ(count, 2);
  EXPECT_FALSE(broker_->countDown(&count));
  EXPECT_TRUE(broker_->countDown(&count));
  EXPECT_EQ(count, 0);
  EXPECT_FALSE(broker_->countDown(&count));
  EXPECT_EQ(count, -1);
}

TEST_F(Broker, CountsOfManyThreadsAddUp) {
  int32_t count = 1;
  std::atomic<int> zeros = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        broker_->countUp(&count);
        if (broker_->countDown(&count)) ++zeros;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 1);
  EXPECT_EQ(zeros, 0);
}

TEST_F(Broker, ServicesAreFoundByManyThreads) {
  auto* const object = new FakeObject;
  broker_->registerService(name(kService), object);
  std::vector<std::thread> threads;
  std::atomic<int> misses = 0;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 1000; ++i) {
        IFakeService* found = nullptr;
        void* slot = nullptr;
        oroGetService(KelCString::borrow(kService), &slot);
        found = static_cast<IFakeService*>(slot);
        if (found == nullptr) ++misses;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(misses, 0);
}

TEST_F(Broker, ObjectsAreMadeByOneThreadAtATime) {
  std::atomic<int> inside = 0;
  std::atomic<int> overlaps = 0;
  provide(1, [&]() -> IOroUnknown* {
    if (++inside != 1) ++overlaps;
    auto* const object = new FakeObject;
    std::this_thread::yield();
    --inside;
    return object;
  });
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) {
        void* found = nullptr;
        if (broker_->createObject(kClass, name(kService), &found) != 1) ++overlaps;
        const IPtr<IFakeService> holder(static_cast<IFakeService*>(found));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(component_.requests, 800);
}

// --- Groups

TEST_F(Broker, GroupBrokersAreMadeWhenAskedFor) {
  EXPECT_EQ(broker_->groupBroker(KelCString(), false), &*broker_);
  EXPECT_EQ(broker_->groupBroker(name(""), true), &*broker_);
  EXPECT_EQ(broker_->groupBroker(name("alpha"), false), nullptr);
  OroObjectBroker* const alpha = broker_->groupBroker(name("alpha"), true);
  ASSERT_NE(alpha, nullptr);
  EXPECT_NE(alpha, &*broker_);
  EXPECT_EQ(broker_->groupBroker(name("alpha"), false), alpha);
  EXPECT_NE(broker_->groupBroker(name("beta"), true), alpha);
  EXPECT_EQ(alpha->componentManager(), &manager_);
}

TEST_F(Broker, GroupIsAWorldOfItsOwnAndAsksForItsOwnComponents) {
  OroObjectBroker* const alpha = broker_->groupBroker(name("alpha"), true);
  alpha->registerService(name(kService), new FakeObject(1));
  EXPECT_EQ(service(), nullptr);
  FakeObject object;
  component_.give = [&] { return &object; };
  alpha->registerClass(kClass, kComponent, {}, name("KelClass"));
  void* found = nullptr;
  EXPECT_EQ(alpha->createObject(kClass, name("IFakeService"), &found), 1);
  EXPECT_EQ(manager_.groups, std::vector<std::string>{"alpha"});
  EXPECT_EQ(broker_->createObject(kClass, name("IFakeService"), &found), 0);
}

TEST_F(Broker, ModuleOfAGroupLooksThereFirst) {
  OroObjectBroker* const alpha = broker_->groupBroker(name("alpha"), true);
  alpha->registerService(name(kService), new FakeObject(1));
  broker_->registerService(name(kService), new FakeObject(2));
  broker_->registerService(name("IFakeOther"), new FakeObject(3));
  EXPECT_EQ(SPtr<IFakeService>()->number(), 2);
  oroModuleIdentity().groupName = KelCString("alpha");
  EXPECT_EQ(SPtr<IFakeService>()->number(), 1);
  alpha->setClassObject(kClass, new FakeObject(4));
  void* found = nullptr;
  EXPECT_EQ(oroCreateObject(kClass, name(kService), &found), 1);
  EXPECT_EQ(static_cast<IFakeService*>(found)->number(), 4);
  broker_->setClassObject(kOtherClass, new FakeObject(5));  // what the group lacks
  EXPECT_EQ(oroCreateObject(kOtherClass, name(kService), &found), 1);
  EXPECT_EQ(static_cast<IFakeService*>(found)->number(), 5);
  oroModuleIdentity().groupName = KelCString();
}

TEST_F(Broker, GroupBrokerGoesWithoutTakingTheProcesssAway) {
  { const OroObjectBroker group(&manager_, name("side")); }
  EXPECT_EQ(oroBroker(), &*broker_);
}

// --- Roles

TEST_F(Broker, RolesAreTheBrokerItself) {
  EXPECT_EQ(broker_->classRegistration(), static_cast<IOroClassRegistration*>(&*broker_));
  EXPECT_EQ(broker_->componentManager(), &manager_);
}

TEST_F(Broker, AnswersToItsNamesAlone) {
  EXPECT_EQ(oroQuery<IOroSubject>(&*broker_), static_cast<IOroSubject*>(&*broker_));
  EXPECT_EQ(oroQuery<IOroUnknown>(&*broker_), static_cast<IOroUnknown*>(&*broker_));
  EXPECT_EQ(oroQueryClass<OroObjectBroker>(&*broker_), &*broker_);
  for (const char* const other : {"IOroObjBroker", "IOroClassRegistration", "IOroIidToClsid"}) {
    void* found = untouched();
    broker_->queryInterface(other, &found);
    EXPECT_EQ(found, nullptr) << other;
  }
  EXPECT_STREQ(broker_->getClassName(), "OroObjectBroker");
}

// --- Observers

TEST_F(Broker, ObserverAttachedLastHearsNothing) {
  FakeObserver a;
  FakeObserver b;
  broker_->attach(&a);
  broker_->notify(name("one"), 5);
  EXPECT_TRUE(a.texts.empty());
  broker_->attach(&b);
  broker_->notify(name("two"), 5);
  EXPECT_EQ(a.texts, std::vector<std::string>{"two"});
  EXPECT_EQ(a.lastSubject, static_cast<IOroSubject*>(&*broker_));
  EXPECT_EQ(a.lastFlag, 0);  // whatever was given
  EXPECT_TRUE(b.texts.empty());
}

TEST_F(Broker, ObserverIsKnownFromTheThirdAttachOn) {
  FakeObserver a;
  broker_->attach(&a);
  broker_->attach(&a);  // the last one is not compared
  broker_->attach(&a);
  broker_->attach(&a);
  broker_->notify(name("text"), 0);
  EXPECT_EQ(a.texts.size(), 1u);
}

TEST_F(Broker, DetachClosesTheGapButNeverTakesTheLastOne) {
  FakeObserver a;
  FakeObserver b;
  FakeObserver c;
  for (FakeObserver* const observer : {&a, &b, &c}) broker_->attach(observer);
  broker_->detach(&c);  // the last one: stays
  broker_->notify(name("1"), 0);
  EXPECT_EQ(a.texts.size(), 1u);
  EXPECT_EQ(b.texts.size(), 1u);
  broker_->detach(&a);
  broker_->notify(name("2"), 0);
  EXPECT_EQ(a.texts.size(), 1u);
  EXPECT_EQ(b.texts.size(), 2u);
  EXPECT_TRUE(c.texts.empty());
  EXPECT_EQ(a.refCount(), 0);  // no references are taken
}

TEST_F(Broker, ManyObserversAreCalledInOrder) {
  std::vector<std::unique_ptr<FakeObserver>> observers;
  std::vector<int> order;
  for (int i = 0; i < 100; ++i) {
    observers.push_back(std::make_unique<FakeObserver>());
    observers.back()->onUpdate = [&order, i] { order.push_back(i); };
    broker_->attach(observers.back().get());
  }
  broker_->notify(name("text"), 0);
  ASSERT_EQ(order.size(), 99u);
  for (int i = 0; i < 99; ++i) EXPECT_EQ(order[static_cast<size_t>(i)], i);
}

TEST_F(Broker, NotifyWithinANotifyDoesNothing) {
  FakeObserver a;
  FakeObserver last;
  broker_->attach(&a);
  broker_->attach(&last);
  a.onUpdate = [&] { broker_->notify(name("inner"), 0); };
  broker_->notify(name("outer"), 0);
  EXPECT_EQ(a.texts, std::vector<std::string>{"outer"});
  a.onUpdate = nullptr;
  broker_->notify(name("next"), 0);
  EXPECT_EQ(a.texts.size(), 2u);
}

// --- The end

TEST_F(Broker, ServicesDieWithLockAndBrokerTheRestWithout) {
  FakeObject survivor;
  survivor.addRef();
  auto* const service = new FakeObject;
  IOroObjBroker* atDeath = nullptr;
  void* found = untouched();
  service->onDeath = [&] {
    atDeath = oroBroker();
    oroGetService(KelCString::borrow(kService), &found);
  };
  broker_->registerService(name(kService), service);
  broker_->setClassObject(kClass, new FakeObject);
  IOroObjBroker* const before = oroBroker();
  broker_.reset();
  EXPECT_EQ(atDeath, before);
  EXPECT_EQ(found, nullptr);  // it is no service any more
  EXPECT_EQ(oroBroker(), nullptr);
  EXPECT_EQ(FakeObject::alive, 1);
  survivor.releaseNoDestroy();
  EXPECT_EQ(survivor.refCount(), -42);
}

TEST_F(Broker, DyingServicesAreToldTheTruthAboutTheOthers) {
  constexpr const char* names[] = {"IFakeService", "FakeObject", "IOroUnknown"};
  OroObjectBroker& broker = *broker_;
  int asked = 0;
  int lies = 0;
  const auto ask = [&] {
    for (const char* const each : names) {
      void* found = untouched();
      const int32_t result = broker.getService(name(each), &found);
      ++asked;
      if (result != (found != nullptr ? 1 : 0)) ++lies;
    }
  };
  for (const char* const each : names) {
    auto* const object = new FakeObject;
    object->onDeath = ask;
    broker_->registerService(name(each), object);
  }
  broker_.reset();
  EXPECT_EQ(asked, 9);
  EXPECT_EQ(lies, 0);
}

TEST_F(Broker, GroupThatHasGoneIsNoneToTheNextOne) {
  OroObjectBroker& broker = *broker_;
  std::vector<int> living;
  for (const char* const each : {"a", "b"}) {
    auto* const object = new FakeObject;
    object->onDeath = [&] {
      living.push_back((broker.groupBroker(name("a"), false) != nullptr) +
                       (broker.groupBroker(name("b"), false) != nullptr));
    };
    broker.groupBroker(name(each), true)->registerService(name(kService), object);
  }
  broker_.reset();
  EXPECT_EQ(living, (std::vector<int>{2, 1}));
}

TEST_F(Broker, GroupsGoBeforeTheProcesssServices) {
  std::string order;
  auto* const own = new FakeObject;
  own->onDeath = [&] { order += "own;"; };
  broker_->registerService(name(kService), own);
  auto* const ofGroup = new FakeObject;
  ofGroup->onDeath = [&] { order += "group;"; };
  broker_->groupBroker(name("g"), true)->registerService(name(kService), ofGroup);
  broker_.reset();
  EXPECT_EQ(order, "group;own;");
}

// --- The agreed places of operations

TEST(BrokerSlots, StandInTheirOrder) {
  using B = IOroObjBroker;
  int slot = 3;  // the destructor comes first and takes two
  EXPECT_EQ(tests::slotNumber(&B::createObject), slot++);
  EXPECT_EQ(tests::slotNumber(&B::getComponentId), slot++);
  EXPECT_EQ(tests::slotNumber(&B::registerService), slot++);
  EXPECT_EQ(tests::slotNumber(&B::registerInterface), slot++);
  EXPECT_EQ(tests::slotNumber(&B::unregisterInterface), slot++);
  EXPECT_EQ(tests::slotNumber(&B::getService), slot++);
  EXPECT_EQ(tests::slotNumber(&B::hasService), slot++);
  EXPECT_EQ(tests::slotNumber(&B::classSupports), slot++);
  EXPECT_EQ(tests::slotNumber(&B::getLastStatus), slot++);
  EXPECT_EQ(tests::slotNumber(&B::countUp), slot++);
  EXPECT_EQ(tests::slotNumber(&B::countDown), slot++);
  EXPECT_EQ(tests::slotNumber(&B::groupBroker), slot++);
  EXPECT_EQ(tests::slotNumber(&B::classRegistration), slot++);
  EXPECT_EQ(tests::slotNumber(&B::componentManager), slot++);
  EXPECT_EQ(tests::slotNumber(&B::setClassObject), slot++);
  EXPECT_EQ(tests::slotNumber(&B::removeClassObject), slot++);
  EXPECT_EQ(tests::slotNumber(&B::createInstance), slot++);
}

TEST(BrokerSlots, RolesStandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IOroClassRegistration::registerClass), 3);
  EXPECT_EQ(tests::slotNumber(&IOroClassRegistration::unregisterClass), 4);
  EXPECT_EQ(tests::slotNumber(&IOroIidToClsid::classOfInterface), 3);
  EXPECT_EQ(tests::slotNumber(&IOroSubject::attach), 1);
  EXPECT_EQ(tests::slotNumber(&IOroSubject::detach), 2);
  EXPECT_EQ(tests::slotNumber(&IOroSubject::notify), 3);
  EXPECT_EQ(tests::slotNumber(&IOroObserver::update), 1);
  EXPECT_EQ(tests::slotNumber(&IOroLog3::log), 1);
}

}  // namespace
