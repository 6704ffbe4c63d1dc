#include "orobasictypes/oroclasswalker.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/oromodule.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/things.h"

namespace {

using tests::KelBigThing;
using tests::KelThing;

std::string shown(const KelCString& text) { return text.text() == nullptr ? "-" : text.text(); }

// "name<parent", with a star for a class.
std::vector<std::string> shown(const OroClassRecordList& list) {
  std::vector<std::string> lines;
  for (const OroClassRecord& record : list) {
    lines.push_back(shown(record.name) + (record.isClass == 1 ? "*" : "") + "<" +
                    shown(record.parent));
  }
  return lines;
}
using Lines = std::vector<std::string>;

// A walk by hand, without what the ready-made ones do afterwards.
struct HandWalk {
  OroArray<KelCString> parents;
  OroClassRecordList records;
  OroNameSet stopSet{6};
  OroClassWalker walker{&parents, &records, &stopSet, nullptr, false};
};

TEST(OroClassWalker, ClassThenInterfacesInTheirOrder) {
  KelThing thing;
  HandWalk walk;
  thing.queryInterface(nullptr, &walk.walker);
  EXPECT_EQ(shown(walk.records),
            (Lines{"KelThing*<-", "IOroThing<KelThing", "IOroThingV2<KelThing"}));
  EXPECT_EQ(walk.records[0].name.text(), nullptr) << "element 0 stays empty";
  EXPECT_EQ(walk.parents.count(), 1) << "a class without a concrete base is not left";
}

TEST(OroClassWalker, BaseClassIsVisitedLastAndLeft) {
  KelBigThing thing;
  HandWalk walk;
  thing.queryInterface(nullptr, &walk.walker);
  EXPECT_EQ(shown(walk.records),
            (Lines{"KelBigThing*<-", "IOroOther<KelBigThing", "IOroThing<KelBigThing",
                   "KelThing*<KelBigThing", "IOroThing<KelThing", "IOroThingV2<KelThing"}));
  ASSERT_EQ(walk.parents.count(), 1);
  EXPECT_STREQ(walk.parents.last().text(), "KelBigThing");
}

TEST(OroClassWalker, NamesAreBorrowed) {
  KelThing thing;
  HandWalk walk;
  thing.queryInterface(nullptr, &walk.walker);
  EXPECT_LT(walk.records[1].name.capacity(), 1);
  EXPECT_LT(walk.records[2].parent.capacity(), 1);
}

TEST(OroClassWalker, InterfaceBeforeAnyClassHasNoParentAndIsNoParent) {
  HandWalk walk;
  oroVisitClass("IFirst", 0, &walk.walker);
  oroVisitClass("ISecond", 0, &walk.walker);
  EXPECT_EQ(shown(walk.records), (Lines{"IFirst<-", "ISecond<-"}));
  EXPECT_TRUE(walk.parents.isEmpty());
}

TEST(OroClassWalker, LeavingWithNothingEnteredDoesNothing) {
  HandWalk walk;
  oroLeaveClass(&walk.walker);
  EXPECT_EQ(walk.parents.count(), 0);
}

TEST(OroClassWalker, HitInTheStopSetEmptiesTheWalkForGood) {
  KelBigThing thing;
  HandWalk walk;
  walk.stopSet.insert(KelCString::borrow("IOroThingV2"), 1);
  thing.queryInterface(nullptr, &walk.walker);
  EXPECT_TRUE(walk.walker.stopped);
  EXPECT_EQ(walk.records.count(), 0);
  EXPECT_EQ(walk.parents.count(), 0);
  oroVisitClass("KelLater", 1, &walk.walker);
  EXPECT_EQ(walk.records.count(), 0);
  EXPECT_EQ(walk.parents.count(), 0);
}

TEST(OroClassWalker, WalkWithoutAStopSetGathersEverything) {
  KelThing thing;
  HandWalk walk;
  walk.walker.stopSet = nullptr;
  thing.queryInterface(nullptr, &walk.walker);
  EXPECT_EQ(walk.records.count(), 3);
}

class OroObjectIdentityTest : public testing::Test {
 protected:
  void TearDown() override { testaccess::resetModule(); }
};

TEST_F(OroObjectIdentityTest, TellsTheModuleThatMadeTheObject) {
  KelBigThing thing;
  OroComponentIdentity identity;
  identity.componentName = KelCString::borrow("left over");
  ASSERT_TRUE(oroObjectIdentity(&thing, identity));
  EXPECT_TRUE(identity.filled);
  EXPECT_STREQ(identity.componentName.text(), "cowlcomponent");
  EXPECT_TRUE(identity.groupName.isEmpty());
  EXPECT_TRUE(identity.componentId.isNull());
}

TEST_F(OroObjectIdentityTest, FirstClassVisitedAnswersForAll) {
  OroComponentIdentity identity;
  OroClassWalker walker;
  walker.identity = &identity;
  oroModuleIdentity().componentName = KelCString::borrow("first");
  oroModuleIdentity().groupName = KelCString::borrow("group");
  oroModuleIdentity().componentId.data1 = 7;
  oroVisitClass("KelFirst", 1, &walker);
  oroModuleIdentity().componentName = KelCString::borrow("second");
  oroVisitClass("KelSecond", 1, &walker);
  oroLeaveClass(&walker);
  EXPECT_STREQ(identity.componentName.text(), "first");
  EXPECT_STREQ(identity.groupName.text(), "group");
  EXPECT_EQ(identity.componentId.data1, 7u);
}

TEST_F(OroObjectIdentityTest, NothingIsGatheredForAnIdentity) {
  OroComponentIdentity identity;
  HandWalk walk;
  walk.walker.identity = &identity;
  walk.stopSet.insert(KelCString::borrow("KelThing"), 1);
  KelThing thing;
  thing.queryInterface(nullptr, &walk.walker);
  EXPECT_TRUE(identity.filled);
  EXPECT_EQ(walk.records.count(), 0);
  EXPECT_EQ(walk.parents.count(), 0);
  EXPECT_FALSE(walk.walker.stopped);
}

TEST_F(OroObjectIdentityTest, NullObjectHasNone) {
  OroComponentIdentity identity;
  EXPECT_FALSE(oroObjectIdentity(nullptr, identity));
  EXPECT_FALSE(identity.filled);
}

TEST(OroObjectHierarchy, RepeatedNamesWithOneParentAreReduced) {
  class Twice : public KelThing {
   public:
    void queryInterface(const char* name, void* out) override {
      if (name != nullptr) return KelThing::queryInterface(name, out);
      auto* const walker = static_cast<OroClassWalker*>(out);
      oroVisitClass("KelTwice", 1, walker);
      oroVisitClass("IOne", 0, walker);
      oroVisitClass("ITwo", 0, walker);
      oroVisitClass("IOne", 0, walker);      // same parent: goes
      oroVisitClass("KelInner", 1, walker);  // becomes the parent
      oroVisitClass("IOne", 0, walker);      // another parent: stays
      oroVisitClass("KelTwice", 1, walker);  // the name of record 1: goes whatever the parent
      oroVisitClass("ITwo", 0, walker);      // parents are compared by name: goes
    }
  };
  Twice object;
  OroClassRecordList list;
  ASSERT_TRUE(oroObjectHierarchy(&object, list));
  EXPECT_EQ(shown(list), (Lines{"KelTwice*<-", "IOne<KelTwice", "ITwo<KelTwice",
                                "KelInner*<KelTwice", "IOne<KelInner"}));
}

TEST(OroObjectHierarchy, ListIsFilledAfresh) {
  KelBigThing thing;
  OroClassRecordList list;
  list.add({KelCString::borrow("left over"), 1, KelCString()});
  ASSERT_TRUE(oroObjectHierarchy(&thing, list));
  EXPECT_EQ(shown(list),
            (Lines{"KelBigThing*<-", "IOroOther<KelBigThing", "IOroThing<KelBigThing",
                   "KelThing*<KelBigThing", "IOroThing<KelThing", "IOroThingV2<KelThing"}));
}

TEST(OroObjectHierarchy, FrameworkObjectsGiveAnEmptyList) {
  class IOroComponentLoader : public virtual IOroUnknown {
   public:
    static constexpr const char* interfaceName() { return "IOroComponentLoader"; }
  };
  class Loader : public KelThing, public IOroComponentLoader {
   public:
    static constexpr const char* className() { return "Loader"; }
    using Offers = OroOffersOver<Loader, KelThing, IOroComponentLoader>;
    void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
    const char* getClassName() const override { return className(); }
  };
  Loader loader;
  OroClassRecordList list;
  EXPECT_TRUE(oroObjectHierarchy(&loader, list));
  EXPECT_EQ(list.count(), 0);
}

TEST(OroObjectHierarchy, EachNameOfTheFrameworkStopsTheWalk) {
  for (const char* name : {"IOroComponent", "IOroComponentManager", "IOroComponentLoader",
                           "IOroComponentContainer", "KelComponentManager"}) {
    class Named : public KelThing {
     public:
      explicit Named(const char* className) : className_(className) {}
      void queryInterface(const char*, void* out) override {
        oroVisitClass(className_, 1, static_cast<OroClassWalker*>(out));
      }

     private:
      const char* className_;
    };
    Named object(name);
    OroClassRecordList list;
    EXPECT_TRUE(oroObjectHierarchy(&object, list));
    EXPECT_EQ(list.count(), 0) << name;
  }
}

TEST(OroObjectHierarchy, NullObjectFails) {
  OroClassRecordList list;
  EXPECT_FALSE(oroObjectHierarchy(nullptr, list));
}

}  // namespace
