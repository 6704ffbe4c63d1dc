#include "orobasictypes/orooffers.h"

#include <gtest/gtest.h>

#include "tests/orobasictypes/things.h"

namespace {

using tests::IOroOther;
using tests::IOroThing;
using tests::IOroThingV2;
using tests::KelBigThing;
using tests::KelThing;

int marker;  // something that a query must not leave behind

void* query(IOroUnknown& object, const char* name) {
  void* found = &marker;
  object.queryInterface(name, &found);
  return found;
}

TEST(OroOffers, ClassIsOfferedUnderItsName) {
  KelThing thing;
  EXPECT_EQ(query(thing, "KelThing"), &thing);
  EXPECT_STREQ(thing.getClassName(), "KelThing");
  EXPECT_EQ(oroQueryClass<KelThing>(static_cast<IOroThingV2*>(&thing)), &thing);
}

TEST(OroOffers, InterfaceIsItsOwnPartOfTheObject) {
  KelThing thing;
  EXPECT_EQ(query(thing, "IOroThing"), static_cast<IOroThing*>(&thing));
  EXPECT_EQ(query(thing, "IOroThingV2"), static_cast<IOroThingV2*>(&thing));
  EXPECT_NE(query(thing, "IOroThingV2"), query(thing, "IOroUnknown"));
  EXPECT_EQ(oroQuery<IOroThingV2>(static_cast<IOroThing*>(&thing))->colour(), 21);
}

TEST(OroOffers, UnknownIsOneAddressThroughEveryInterface) {
  KelBigThing thing;
  IOroUnknown* const unknown = &thing;
  for (IOroUnknown* face : {static_cast<IOroUnknown*>(static_cast<IOroThing*>(&thing)),
                            static_cast<IOroUnknown*>(static_cast<IOroThingV2*>(&thing)),
                            static_cast<IOroUnknown*>(static_cast<IOroOther*>(&thing))}) {
    EXPECT_EQ(query(*face, "IOroUnknown"), unknown);
  }
}

TEST(OroOffers, NameThatIsNotOfferedStoresNull) {
  KelBigThing thing;
  for (const char* name : {"IOroNothing", "", "ioroThing", "IOroThin", "IOroThingV", "IOroThing ",
                           "OroShared", "OroObject"}) {
    EXPECT_EQ(query(thing, name), nullptr) << name;
  }
}

TEST(OroOffers, NoReferenceIsTaken) {
  KelThing thing;
  query(thing, "IOroThing");
  query(thing, "IOroUnknown");
  query(thing, "KelThing");
  EXPECT_EQ(thing.refCount(), 0);
}

TEST(OroOffers, BaseClassAnswersWhatTheClassDoesNot) {
  KelBigThing thing;
  EXPECT_EQ(query(thing, "KelBigThing"), &thing);
  EXPECT_EQ(query(thing, "KelThing"), static_cast<KelThing*>(&thing));
  EXPECT_EQ(query(thing, "IOroThingV2"), static_cast<IOroThingV2*>(&thing));
  EXPECT_EQ(query(thing, "IOroOther"), static_cast<IOroOther*>(&thing));
  EXPECT_STREQ(static_cast<KelThing&>(thing).getClassName(), "KelBigThing");
}

TEST(OroOffers, ClassNameComesBeforeAnInterfaceOfTheSameName) {
  class INamesake : public virtual IOroUnknown {
   public:
    static constexpr const char* interfaceName() { return "Namesake"; }
    virtual int32_t operation() = 0;
  };
  class Namesake : public tests::IOroThing, public INamesake {
   public:
    static constexpr const char* className() { return "Namesake"; }
    using Offers = OroOffers<Namesake, INamesake>;
    void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
    const char* getClassName() const override { return className(); }
    int32_t operation() override { return 0; }
    int32_t size() override { return 0; }
    int32_t weight() override { return 0; }
  };
  Namesake object;
  EXPECT_EQ(query(object, "Namesake"), &object);
  EXPECT_NE(query(object, "Namesake"), static_cast<INamesake*>(&object));
}

TEST(OroOffers, NullObjectHasNoInterface) {
  IOroThing* const none = nullptr;
  EXPECT_EQ(oroQuery<IOroThingV2>(none), nullptr);
  EXPECT_EQ(oroQueryClass<KelThing>(none), nullptr);
  IOroUnknown* const unknown = none;
  EXPECT_EQ(unknown, nullptr);
}

}  // namespace
