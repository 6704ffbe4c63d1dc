#include "orobasictypes/oroshared.h"

#include <bit>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/oroweakref.h"
#include "tests/orobasictypes/things.h"
#include "tests/support/fakebroker.h"

namespace {

using tests::KelThing;

class OroSharedTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(KelThing::alive, 0); }
  void TearDown() override { EXPECT_EQ(KelThing::alive, 0); }
};

// Looks at its own weak reference while it dies.
class Witness : public KelThing {
 public:
  Witness(bool& sawTarget, OroWeakRef*& weak) : sawTarget_(sawTarget), weak_(weak) {}
  ~Witness() override { sawTarget_ = weak_->target() != nullptr; }

 private:
  bool& sawTarget_;
  OroWeakRef*& weak_;
};

TEST_F(OroSharedTest, NewObjectBelongsToNobody) {
  KelThing* const thing = new KelThing;
  EXPECT_EQ(thing->refCount(), 0);
  delete thing;
}

TEST_F(OroSharedTest, LastReleaseDestroys) {
  KelThing* const thing = new KelThing;
  thing->addRef();
  thing->addRef();
  EXPECT_EQ(thing->refCount(), 2);
  thing->release();
  EXPECT_EQ(thing->refCount(), 1);
  EXPECT_EQ(KelThing::alive, 1);
  thing->release();
  EXPECT_EQ(KelThing::alive, 0);
}

TEST_F(OroSharedTest, CopyIsANewObject) {
  KelThing thing;
  thing.addRef();
  OroWeakRef* const weak = thing.getWeakRef();
  KelThing copy(thing);
  ++KelThing::alive;  // the copy was made by the compiler's constructor
  EXPECT_EQ(copy.refCount(), 0);
  EXPECT_NE(copy.getWeakRef(), weak);
  copy = thing;
  EXPECT_EQ(copy.refCount(), 0);
  copy.addRef();
  copy.releaseNoDestroy();
  EXPECT_EQ(thing.refCount(), 1);
  thing.releaseNoDestroy();
}

TEST_F(OroSharedTest, WeakReferenceIsMadeOnceAndCountedOnce) {
  KelThing* const thing = new KelThing;
  thing->addRef();
  OroWeakRef* const weak = thing->getWeakRef();
  EXPECT_EQ(weak->target(), thing);
  EXPECT_EQ(weak->refCount(), 1);
  EXPECT_EQ(thing->getWeakRef(), weak);
  EXPECT_EQ(weak->refCount(), 1);
  EXPECT_EQ(thing->refCount(), 1);
  thing->release();
}

TEST_F(OroSharedTest, WeakReferenceOutlivesItsTargetForWhoeverHoldsIt) {
  KelThing* const thing = new KelThing;
  thing->addRef();
  OroWeakRef* const weak = thing->getWeakRef();
  weak->addRef();
  thing->release();
  EXPECT_EQ(KelThing::alive, 0);
  EXPECT_EQ(weak->target(), nullptr);
  EXPECT_EQ(weak->refCount(), 1);
  weak->release();
}

TEST_F(OroSharedTest, WeakReferenceIsSeveredBeforeTheDestructorRuns) {
  bool sawTarget = true;
  OroWeakRef* weak = nullptr;
  auto* const witness = new Witness(sawTarget, weak);
  witness->addRef();
  weak = witness->getWeakRef();
  weak->addRef();
  witness->release();
  EXPECT_FALSE(sawTarget);
  weak->release();
}

TEST_F(OroSharedTest, WeakReferenceOfAWeakReferenceIsItself) {
  KelThing* const thing = new KelThing;
  thing->addRef();
  OroWeakRef* const weak = thing->getWeakRef();
  EXPECT_EQ(weak->getWeakRef(), weak);
  OroShared* const shared = weak;
  EXPECT_EQ(shared->getWeakRef(), weak);
  EXPECT_EQ(weak->refCount(), 1);
  thing->release();
}

TEST_F(OroSharedTest, ReleaseNoDestroySeversAndKeepsTheObject) {
  KelThing* const thing = new KelThing;
  thing->addRef();
  OroWeakRef* const first = thing->getWeakRef();
  first->addRef();
  thing->releaseNoDestroy();
  EXPECT_EQ(KelThing::alive, 1);
  EXPECT_EQ(first->target(), nullptr);
  EXPECT_EQ(first->refCount(), 1);

  OroWeakRef* const second = thing->getWeakRef();
  EXPECT_NE(second, first);
  EXPECT_EQ(second->target(), thing);
  EXPECT_EQ(second->refCount(), 1);
  second->addRef();
  first->release();
  const OroShared* const address = thing;
  delete thing;
  EXPECT_EQ(second->target(), address) << "the destructor does not touch the weak reference";
  second->release();
  second->release();
}

TEST_F(OroSharedTest, WithoutABrokerADeadCountIsMarked) {
  KelThing thing;
  thing.addRef();
  thing.releaseNoDestroy();
  EXPECT_EQ(thing.refCount(), -42);
  thing.addRef();
  thing.releaseNoDestroy();
  EXPECT_EQ(thing.refCount(), -42);
}

// What holds a dying object for a moment must not destroy it again.
TEST_F(OroSharedTest, WithoutABrokerADyingObjectMayBeHeld) {
  class Holder : public KelThing {
   public:
    ~Holder() override {
      addRef();
      release();
    }
  };
  auto* const holder = new Holder;
  holder->addRef();
  holder->release();
  EXPECT_EQ(KelThing::alive, 0);
}

TEST_F(OroSharedTest, CountStandsBeforeTheWeakReference) {
  KelThing thing;
  OroShared* const shared = &thing;
  shared->addRef();
  OroWeakRef* const weak = shared->getWeakRef();
  struct Fields {
    void* table;
    int32_t count;
    OroWeakRef* weak;
  };
  static_assert(sizeof(Fields) == sizeof(OroShared));
  Fields fields;
  std::memcpy(&fields, static_cast<const void*>(shared), sizeof fields);
  EXPECT_EQ(fields.count, 1);
  EXPECT_EQ(fields.weak, weak);
  shared->releaseNoDestroy();
}

TEST_F(OroSharedTest, WithABrokerADeadCountIsZero) {
  tests::FakeBroker broker;
  KelThing thing;
  thing.addRef();
  thing.releaseNoDestroy();
  EXPECT_EQ(thing.refCount(), 0);
  EXPECT_EQ(broker.countChanges, 2);
}

TEST_F(OroSharedTest, CountBelowZeroDestroysNothing) {
  KelThing withoutBroker;
  withoutBroker.release();
  EXPECT_EQ(withoutBroker.refCount(), -1);
  tests::FakeBroker broker;
  KelThing thing;
  thing.release();
  EXPECT_EQ(thing.refCount(), -1);
  EXPECT_EQ(KelThing::alive, 2);
}

TEST_F(OroSharedTest, ObjectsDieOutsideTheLock) {
  // The destructor takes and drops references: with the lock held these would come too late to be
  // told apart, and a lock that is not recursive would stand still.
  class Owner : public KelThing {
   public:
    explicit Owner(KelThing* owned) : owned_(owned) { owned_->addRef(); }
    ~Owner() override {
      std::thread([this] { owned_->addRef(); }).join();
      owned_->release();
      owned_->release();
    }

   private:
    KelThing* owned_;
  };
  tests::FakeBroker broker;
  auto* const owner = new Owner(new KelThing);
  owner->addRef();
  owner->release();
  EXPECT_EQ(KelThing::alive, 0);
}

TEST_F(OroSharedTest, ThreadsCountUnderTheBrokersLock) {
  tests::FakeBroker broker;
  auto* const thing = new KelThing;
  thing->addRef();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([thing] {
      for (int n = 0; n < 20000; ++n) {
        thing->addRef();
        thing->release();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(thing->refCount(), 1);
  EXPECT_EQ(broker.countChanges, 160001);
  thing->release();
}

TEST_F(OroSharedTest, LastOfManyThreadsDestroysOnce) {
  tests::FakeBroker broker;
  for (int round = 0; round < 200; ++round) {
    auto* const thing = new KelThing;
    thing->addRef();
    thing->addRef();
    std::thread other([thing] { thing->release(); });
    thing->release();
    other.join();
    ASSERT_EQ(KelThing::alive, 0);
  }
}

// Modules are built apart, so the order of operations is part of the contract. This is an operation
// by its place in an object's table, in which a virtual destructor takes the first two places.
template <class Function, class Object>
Function slot(Object* object, int place) {
  void** const table = *reinterpret_cast<void***>(object);
  return std::bit_cast<Function>(table[place]);
}

TEST_F(OroSharedTest, VirtualOperationsStandInTheirOrder) {
  KelThing* const thing = new KelThing;
  IOroUnknown* const object = thing;
  slot<void (*)(IOroUnknown*)>(object, 2)(object);  // addRef
  slot<void (*)(IOroUnknown*)>(object, 2)(object);
  EXPECT_EQ(thing->refCount(), 2);
  EXPECT_EQ(slot<int32_t (*)(IOroUnknown*)>(object, 5)(object), 2);  // refCount
  OroWeakRef* const weak = slot<OroWeakRef* (*)(IOroUnknown*)>(object, 6)(object);
  EXPECT_EQ(weak, thing->getWeakRef());
  void* found = nullptr;
  slot<void (*)(IOroUnknown*, const char*, void*)>(object, 7)(object, "KelThing", &found);
  EXPECT_EQ(found, thing);
  EXPECT_STREQ(slot<const char* (*)(const IOroUnknown*)>(object, 8)(object), "KelThing");
  slot<void (*)(IOroUnknown*)>(object, 3)(object);  // release
  slot<void (*)(IOroUnknown*)>(object, 4)(object);  // releaseNoDestroy
  EXPECT_EQ(KelThing::alive, 1);
  slot<void (*)(IOroUnknown*)>(object, 1)(object);  // the destructor that frees the storage
  EXPECT_EQ(KelThing::alive, 0);
}

TEST_F(OroSharedTest, OwnOperationsOfAnInterfaceStartItsTable) {
  KelThing thing;
  tests::IOroThing* const face = &thing;
  EXPECT_EQ(slot<int32_t (*)(tests::IOroThing*)>(face, 0)(face), 11);
  EXPECT_EQ(slot<int32_t (*)(tests::IOroThing*)>(face, 1)(face), 12);
}

}  // namespace
