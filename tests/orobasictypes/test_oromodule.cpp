#include "orobasictypes/oromodule.h"

#include <gtest/gtest.h>

#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/things.h"
#include "tests/support/fakebroker.h"

namespace {

using tests::FakeBroker;
using tests::IOroThing;
using tests::KelThing;

constexpr GUID thingId{
    0x1DBFCAD9, 0x0338, 0x4923, {0xA3, 0x29, 0xEA, 0xEA, 0x81, 0x06, 0x3F, 0xF0}};

class OroModuleTest : public testing::Test {
 protected:
  void TearDown() override {
    testaccess::resetModule();
    EXPECT_EQ(KelThing::alive, 0);
  }

  static KelCString thingName() { return KelCString::borrow("IOroThing"); }
  static void publish(FakeBroker& broker, IOroUnknown* object) {
    EXPECT_EQ(broker.registerService(thingName(), object), 1);
  }

  int marker_ = 0;  // something that a request must leave alone, or not
  void* const untouched_ = &marker_;
  void* found_ = &marker_;
};

TEST_F(OroModuleTest, HostIdentity) {
  const OroComponentIdentity& identity = oroModuleIdentity();
  EXPECT_STREQ(identity.componentName.text(), "cowlcomponent");
  EXPECT_TRUE(identity.groupName.isEmpty());
  EXPECT_TRUE(identity.componentId.isNull());
}

TEST_F(OroModuleTest, WithoutABrokerServicesAreAbsentAndTheOutputIsLeftAlone) {
  EXPECT_EQ(oroGetService(thingName(), &found_), 0);
  EXPECT_EQ(found_, untouched_);
  EXPECT_EQ(oroCreateObject(thingId, thingName(), &found_), 0);
  EXPECT_EQ(found_, untouched_);
}

TEST_F(OroModuleTest, AfterTheBrokerServicesAreAbsentAgain) {
  { FakeBroker broker; }
  EXPECT_EQ(oroBroker(), nullptr);
  EXPECT_EQ(oroGetService(thingName(), &found_), 0);
  EXPECT_EQ(found_, untouched_);
}

TEST_F(OroModuleTest, ServiceComesBorrowed) {
  FakeBroker broker;
  auto* const thing = new KelThing;
  publish(broker, thing);
  EXPECT_EQ(oroGetService(thingName(), &found_), 1);
  EXPECT_EQ(found_, static_cast<IOroThing*>(thing));
  EXPECT_EQ(thing->refCount(), 1);
}

TEST_F(OroModuleTest, MissingServiceStoresNull) {
  FakeBroker broker;
  EXPECT_EQ(oroGetService(thingName(), &found_), 0);
  EXPECT_EQ(found_, nullptr);
}

TEST_F(OroModuleTest, CreatedObjectHasNoReferenceYet) {
  FakeBroker broker;
  auto* const thing = new KelThing;
  broker.setClassObject(thingId, thing);
  EXPECT_EQ(oroCreateObject(thingId, thingName(), &found_), 1);
  EXPECT_EQ(found_, static_cast<IOroThing*>(thing));
  EXPECT_EQ(thing->refCount(), 1) << "the broker's own";
  EXPECT_EQ(oroCreateObject(GUID{}, thingName(), &found_), 0);
}

TEST_F(OroModuleTest, GroupBrokerIsAskedFirst) {
  FakeBroker broker;
  FakeBroker& group = broker.addGroup("tools");
  auto* const common = new KelThing;
  auto* const special = new KelThing;
  publish(broker, common);
  publish(group, special);
  group.setClassObject(thingId, special);

  EXPECT_EQ(oroGetService(thingName(), &found_), 1);
  EXPECT_EQ(found_, static_cast<IOroThing*>(common)) << "a module without a group";
  EXPECT_EQ(group.serviceRequests, 0);

  oroModuleIdentity().groupName = KelCString::borrow("tools");
  EXPECT_EQ(oroGetService(thingName(), &found_), 1);
  EXPECT_EQ(found_, static_cast<IOroThing*>(special));
  EXPECT_EQ(oroCreateObject(thingId, thingName(), &found_), 1);
  EXPECT_EQ(broker.objectRequests, 0);
}

TEST_F(OroModuleTest, ProcessBrokerServesWhatTheGroupLacks) {
  FakeBroker broker;
  FakeBroker& group = broker.addGroup("tools");
  auto* const thing = new KelThing;
  publish(broker, thing);
  broker.setClassObject(thingId, thing);
  oroModuleIdentity().groupName = KelCString::borrow("tools");
  EXPECT_EQ(oroGetService(thingName(), &found_), 1);
  EXPECT_EQ(found_, static_cast<IOroThing*>(thing));
  EXPECT_EQ(oroCreateObject(thingId, thingName(), &found_), 1);
  EXPECT_EQ(group.serviceRequests, 1);
  EXPECT_EQ(group.objectRequests, 1);

  oroModuleIdentity().groupName = KelCString::borrow("a group that was never made");
  EXPECT_EQ(oroGetService(thingName(), &found_), 1);
}

TEST_F(OroModuleTest, CountsWithoutABroker) {
  int32_t count = 0;
  oroCountUp(&count);
  oroCountUp(&count);
  EXPECT_EQ(count, 2);
  EXPECT_FALSE(oroCountDown(&count));
  EXPECT_EQ(count, 1);
  EXPECT_TRUE(oroCountDown(&count));
  EXPECT_EQ(count, -42);
  oroCountUp(&count);
  EXPECT_FALSE(oroCountDown(&count)) << "only a fall to 0 counts";
  EXPECT_EQ(count, -42);
  EXPECT_FALSE(oroCountDown(&count));
  EXPECT_EQ(count, -43);
}

TEST_F(OroModuleTest, CountsThroughTheBroker) {
  FakeBroker broker;
  int32_t count = 0;
  oroCountUp(&count);
  EXPECT_EQ(count, 1);
  EXPECT_TRUE(oroCountDown(&count));
  EXPECT_EQ(count, 0);
  EXPECT_FALSE(oroCountDown(&count));
  EXPECT_EQ(count, -1);
  EXPECT_EQ(broker.countChanges, 3);
}

TEST_F(OroModuleTest, CountsThatOutliveTheBroker) {
  int32_t count = 0;
  {
    FakeBroker broker;
    oroCountUp(&count);
  }
  EXPECT_TRUE(oroCountDown(&count));
  EXPECT_EQ(count, -42);
}

}  // namespace
