#include "orobasictypes/sptr.h"

#include <gtest/gtest.h>

#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/things.h"
#include "tests/support/fakebroker.h"
#include "tests/support/fakeheap.h"

namespace {

using tests::FakeBroker;
using tests::IOroThing;
using tests::KelThing;

static_assert(sizeof(SPtr<IOroThing>) == sizeof(IPtr<IOroThing>), "it holds nothing of its own");

class SPtrTest : public testing::Test {
 protected:
  void TearDown() override {
    testaccess::resetModule();
    EXPECT_EQ(KelThing::alive, 0);
  }

  static void publish(FakeBroker& broker, IOroUnknown* object) {
    EXPECT_EQ(broker.registerService(KelCString::borrow("IOroThing"), object), 1);
  }
};

TEST_F(SPtrTest, IsNullWithoutABroker) {
  const SPtr<IOroThing> none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none.object(), nullptr);
}

TEST_F(SPtrTest, IsNullWithoutTheService) {
  FakeBroker broker;
  EXPECT_FALSE(SPtr<IOroThing>());
  EXPECT_EQ(broker.serviceRequests, 1);
}

TEST_F(SPtrTest, HoldsTheService) {
  auto* const thing = new KelThing;
  SPtr<IOroThing> before;
  {
    FakeBroker broker;
    publish(broker, thing);
    const SPtr<IOroThing> held;
    EXPECT_EQ(held.get(), thing);
    EXPECT_EQ(held.object(), static_cast<IOroUnknown*>(thing));
    EXPECT_EQ(thing->refCount(), 2);
    const SPtr<IOroThing> copy(held);
    EXPECT_EQ(thing->refCount(), 3);
    EXPECT_EQ(broker.serviceRequests, 1) << "a copy does not ask again";
    before = held;
  }
  EXPECT_EQ(KelThing::alive, 1) << "the holder outlives the broker";
  EXPECT_EQ(before->size(), 11);
}

TEST_F(SPtrTest, EachOneAsksAgain) {
  FakeBroker broker;
  SPtr<IOroThing> first;
  EXPECT_FALSE(first);
  publish(broker, new KelThing);
  EXPECT_TRUE(SPtr<IOroThing>());
  EXPECT_FALSE(first);
}

TEST_F(SPtrTest, AskingAllocatesNothing) {
  FakeBroker broker;
  publish(broker, new KelThing);
  tests::FakeHeap heap;
  EXPECT_TRUE(SPtr<IOroThing>());
  EXPECT_FALSE(SPtr<tests::IOroOther>());
  EXPECT_EQ(heap.allocations, 0);
}

TEST_F(SPtrTest, CanBeGivenAnotherObject) {
  FakeBroker broker;
  publish(broker, new KelThing);
  auto* const other = new KelThing;
  SPtr<IOroThing> held;
  held = other;
  EXPECT_EQ(other->refCount(), 1);
  held = nullptr;
  EXPECT_EQ(KelThing::alive, 1) << "the published one";
}

}  // namespace
