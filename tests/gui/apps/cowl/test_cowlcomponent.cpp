#include "gui/apps/cowl/cowlcomponent.h"

#include <gtest/gtest.h>

#include "framework/kelregistry.h"
#include "gui/apps/cowl/builtincomponent.h"
#include "gui/apps/cowl/cowlapp.h"
#include "gui/apps/cowl/cowlimageadder.h"
#include "orobasictypes/iptr.h"
#include "services/kelproductinfo.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"

namespace {

class CowlComponentTest : public testing::Test {
 protected:
  IOroUnknown* object(const GUID& classId, int32_t expected) {
    IOroUnknown* out = component_.get();
    EXPECT_EQ(component_->getClassObject(classId, &out), expected);
    return out;
  }

  IPtr<CowlComponent> component_ = new CowlComponent;
};

TEST_F(CowlComponentTest, HasOneApp) {
  IOroUnknown* const app = object(kCowlAppClass, 1);
  ASSERT_NE(app, nullptr);
  EXPECT_STREQ(app->getClassName(), "CowlApp");
  EXPECT_EQ(object(kCowlAppClass, 1), app);
  EXPECT_EQ(app->refCount(), 1) << "the component's own";
  { IPtr<IOroUnknown> user(app); }
  EXPECT_EQ(object(kCowlAppClass, 1), app);
}

TEST_F(CowlComponentTest, MakesEachImageAdderAnew) {
  const IPtr<IOroUnknown> first(object(kCowlImageAdderClass, 1));
  const IPtr<IOroUnknown> second(object(kCowlImageAdderClass, 1));
  EXPECT_STREQ(first->getClassName(), "CowlImageAdder");
  EXPECT_NE(first.get(), second.get());
  EXPECT_EQ(first->refCount(), 1);
}

TEST_F(CowlComponentTest, HasNothingElse) {
  EXPECT_EQ(object(kCowlComponentId, 0), nullptr);
  EXPECT_EQ(object(GUID{}, 0), nullptr);
  for (GUID id : {kCowlAppClass, kCowlImageAdderClass}) {
    id.data4[7] ^= 1;
    EXPECT_EQ(object(id, 0), nullptr);
    id.data4[7] ^= 1;
    id.data3 ^= 1;
    EXPECT_EQ(object(id, 0), nullptr);
  }
}

TEST_F(CowlComponentTest, StartAndEndDoNothing) {
  component_->initialise(nullptr);
  component_->shutDown();
  EXPECT_EQ(component_->unusedSlot4(), 0);
  EXPECT_EQ(component_->unusedSlot5(), 0);
  EXPECT_NE(object(kCowlAppClass, 1), nullptr);
}

TEST_F(CowlComponentTest, TheAppBringsTheProductFacts) {
  tests::FakeBroker broker;
  const IPtr<KelProductInfo> product(new KelProductInfo);
  broker.registerService(KelCString::borrow("IProductInfo"), product.get());
  KelCString text;
  object(kCowlAppClass, 1);
  EXPECT_STREQ(product->version(text).c_str(), "2021");
  product->setFact(KelCString("version"), KelCString(""));
  object(kCowlAppClass, 1);
  EXPECT_STREQ(product->version(text).c_str(), "") << "at the first request alone";
}

TEST_F(CowlComponentTest, ItsObjectsAnswerForTheirNames) {
  EXPECT_EQ(oroQueryClass<CowlComponent>(component_.get()), component_.get());
  EXPECT_NE(oroQuery<IOroComponent>(component_.get()), nullptr);
  IOroUnknown* const app = object(kCowlAppClass, 1);
  EXPECT_NE(oroQueryClass<CowlApp>(app), nullptr);
  auto* const customizer = oroQuery<IAppCustomizer>(app);
  ASSERT_NE(customizer, nullptr);
  EXPECT_EQ(customizer->unusedSlot1() | customizer->unusedSlot2() | customizer->unusedSlot3(), 0);
  const IPtr<IOroUnknown> adder(object(kCowlImageAdderClass, 1));
  EXPECT_NE(oroQueryClass<CowlImageAdder>(adder.get()), nullptr);
  EXPECT_NE(oroQuery<IOroInitializer>(adder.get()), nullptr);
  EXPECT_EQ(tests::slotNumber(&IAppCustomizer::unusedSlot3), 3);
}

}  // namespace
