#include "orobasictypes/iptr.h"

#include <cstring>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "tests/orobasictypes/things.h"
#include "tests/support/fakebroker.h"

namespace {

using tests::IOroThing;
using tests::IOroThingV2;
using tests::KelThing;

// Modules hand these objects to each other.
static_assert(sizeof(IPtr<IOroThing>) == 3 * sizeof(void*));
static_assert(std::has_virtual_destructor_v<IPtr<IOroThing>>);
static_assert(std::is_nothrow_destructible_v<IPtr<IOroThing>>);

class IPtrTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(KelThing::alive, 0); }
  void TearDown() override { EXPECT_EQ(KelThing::alive, 0); }
};

TEST_F(IPtrTest, EmptyHoldsNothing) {
  const IPtr<IOroThing> none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none.get(), nullptr);
  EXPECT_EQ(none.object(), nullptr);
  const IPtr<IOroThing> null(nullptr);
  EXPECT_EQ(null.get(), nullptr);
  EXPECT_EQ(null.object(), nullptr);
}

TEST_F(IPtrTest, InterfaceStandsBeforeTheObject) {
  auto* const thing = new KelThing;
  const IPtr<IOroThingV2> held(thing);
  const void* fields[3];
  static_assert(sizeof fields == sizeof held);
  std::memcpy(fields, static_cast<const void*>(&held), sizeof fields);
  EXPECT_EQ(fields[1], static_cast<IOroThingV2*>(thing));
  EXPECT_EQ(fields[2], static_cast<IOroUnknown*>(thing));
  EXPECT_NE(fields[1], fields[2]);
}

TEST_F(IPtrTest, TakesAReferenceAndDropsIt) {
  auto* const thing = new KelThing;
  {
    const IPtr<IOroThing> held(thing);
    EXPECT_EQ(thing->refCount(), 1);
    EXPECT_EQ(held->size(), 11);
    EXPECT_EQ((*held).weight(), 12);
    EXPECT_EQ(held.object(), static_cast<IOroUnknown*>(thing));
  }
  EXPECT_EQ(KelThing::alive, 0);
}

TEST_F(IPtrTest, AssigningTheHeldPointerChangesNoCount) {
  auto* const thing = new KelThing;
  IPtr<IOroThing> held(thing);
  tests::FakeBroker broker;
  held = thing;
  held = held.get();
  EXPECT_EQ(broker.countChanges, 0);
  EXPECT_EQ(thing->refCount(), 1);
}

TEST_F(IPtrTest, AssigningAnotherPointerSwapsTheReference) {
  auto* const first = new KelThing;
  auto* const second = new KelThing;
  IPtr<IOroThing> held(first);
  held = second;
  EXPECT_EQ(KelThing::alive, 1);
  EXPECT_EQ(second->refCount(), 1);
  EXPECT_EQ(held.get(), second);
  held = nullptr;
  EXPECT_EQ(KelThing::alive, 0);
  EXPECT_EQ(held.get(), nullptr);
  EXPECT_EQ(held.object(), nullptr);
}

TEST_F(IPtrTest, AssigningAnotherFaceOfTheOnlyReferenceKeepsTheObject) {
  // An object that offers one interface twice, at two addresses.
  struct Left : IOroThing {};
  struct Right : IOroThing {};
  class TwoFaces : public Left, public Right {
   public:
    explicit TwoFaces(bool& alive) : alive_(alive) { alive_ = true; }
    ~TwoFaces() override { alive_ = false; }
    void queryInterface(const char*, void* out) override { *static_cast<void**>(out) = nullptr; }
    const char* getClassName() const override { return "TwoFaces"; }
    int32_t size() override { return 1; }
    int32_t weight() override { return 2; }

   private:
    bool& alive_;
  };
  bool alive = false;
  auto* const object = new TwoFaces(alive);
  IOroThing* const left = static_cast<Left*>(object);
  IOroThing* const right = static_cast<Right*>(object);
  ASSERT_NE(left, right);
  tests::FakeBroker broker;
  IPtr<IOroThing> held(left);
  held = right;
  EXPECT_TRUE(alive);
  EXPECT_EQ(object->refCount(), 1);
  EXPECT_EQ(held.get(), right);
  EXPECT_EQ(broker.countChanges, 3) << "up, up, down";
  held = nullptr;
  EXPECT_FALSE(alive);
}

TEST_F(IPtrTest, NewReferenceIsTakenBeforeTheOldOneIsDropped) {
  // The second thing lives by the first alone.
  class Owner : public KelThing {
   public:
    IPtr<IOroThing> owned{new KelThing};
  };
  auto* const owner = new Owner;
  IPtr<IOroThing> held(owner);
  held = owner->owned;
  EXPECT_EQ(KelThing::alive, 1);
  EXPECT_EQ(held->size(), 11);
  EXPECT_EQ(held.object()->refCount(), 1);
}

TEST_F(IPtrTest, CopyTakesItsOwnReference) {
  auto* const thing = new KelThing;
  IPtr<IOroThing> first(thing);
  {
    const IPtr<IOroThing> second(first);
    EXPECT_EQ(thing->refCount(), 2);
    IPtr<IOroThing> third;
    third = second;
    EXPECT_EQ(thing->refCount(), 3);
  }
  EXPECT_EQ(thing->refCount(), 1);
}

TEST_F(IPtrTest, MoveIsACopy) {
  auto* const thing = new KelThing;
  IPtr<IOroThing> first(thing);
  const IPtr<IOroThing> second(std::move(first));
  EXPECT_EQ(first.get(), thing);
  EXPECT_EQ(thing->refCount(), 2);
}

TEST_F(IPtrTest, HoldsTheObjectUntilItIsReleased) {
  class Looker : public KelThing {
   public:
    Looker(const IPtr<IOroThing>& holder, bool& sawItself)
        : holder_(holder), sawItself_(sawItself) {}
    ~Looker() override { sawItself_ = holder_.get() != nullptr; }

   private:
    const IPtr<IOroThing>& holder_;
    bool& sawItself_;
  };
  bool sawItself = false;
  IPtr<IOroThing> held;
  held = new Looker(held, sawItself);
  held = nullptr;
  EXPECT_TRUE(sawItself);
  sawItself = false;
  {
    IPtr<IOroThing> scoped;
    scoped = new Looker(scoped, sawItself);
  }
  EXPECT_TRUE(sawItself) << "assigning and going are alike";
}

}  // namespace
