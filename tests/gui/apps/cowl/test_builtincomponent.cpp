#include "gui/apps/cowl/builtincomponent.h"

#include <gtest/gtest.h>

#include "framework/kelcomponentmanager.h"
#include "framework/oroobjectbroker.h"
#include "interfaces/IAppCustomizer.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroInitializer.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/testaccess.h"

namespace {

GUID idOf(const char* text) {
  GUID id;
  EXPECT_TRUE(oroParseGuid(text, id)) << text;
  return id;
}

class BuiltInComponent : public testing::Test {
 protected:
  BuiltInComponent() {
    oroSetBroker(broker_.get());
    manager_->setBroker(broker_.get());
  }
  ~BuiltInComponent() override { broker_ = nullptr; }

  void publishManager() {
    broker_->registerService(KelCString::borrow("IOroComponentManager"), manager_);
  }
  IOroComponent* component() {
    IOroComponent* found = nullptr;
    manager_->getComponent(kCowlComponentId, KelCString(), &found);
    return found;
  }
  int32_t create(const GUID& classId, const char* interfaceName, void** out) {
    return broker_->createObject(classId, KelCString::borrow(interfaceName), out);
  }
  void enterClasses() {
    for (const GUID& id : {kCowlAppClass, kCowlImageAdderClass}) {
      broker_->registerClass(id, kCowlComponentId, KelCStringSet(), KelCString("class"));
    }
  }

  KelComponentManager* manager_ = new KelComponentManager;  // the broker's, once published
  IPtr<OroObjectBroker> broker_ = new OroObjectBroker(manager_);
};

TEST_F(BuiltInComponent, IsEnteredUnderItsId) {
  publishManager();
  registerBuiltInComponent();
  ASSERT_NE(component(), nullptr);
  EXPECT_STREQ(component()->getClassName(), "CowlComponent");
  EXPECT_EQ(component(), component());
  EXPECT_EQ(kCowlComponentId, idOf("1DBFCAD9-0338-4923-A329-EAEA81063FF0"));
  EXPECT_EQ(kCowlAppClass, idOf("1E94C4F5-4B50-447B-ABDD-81690EE6F679"));
  EXPECT_EQ(kCowlImageAdderClass, idOf("C7D73C96-D667-4BE7-925D-3A29B22D797D"));
}

TEST_F(BuiltInComponent, ASecondOneIsNotTaken) {
  publishManager();
  registerBuiltInComponent();
  IOroComponent* const first = component();
  registerBuiltInComponent();
  EXPECT_EQ(component(), first);
  EXPECT_EQ(manager_->getLastStatus(), kOroComponentDone);
}

TEST_F(BuiltInComponent, WithoutAManagerNothingIsEntered) {
  registerBuiltInComponent();
  EXPECT_EQ(component(), nullptr);
  delete manager_;
}

TEST_F(BuiltInComponent, EntersNoClass) {
  publishManager();
  registerBuiltInComponent();
  void* found = nullptr;
  for (const GUID& id : {kCowlAppClass, kCowlImageAdderClass}) {
    EXPECT_EQ(create(id, "IOroUnknown", &found), 0);
    EXPECT_EQ(broker_->getLastStatus(), 1001);
  }
}

TEST_F(BuiltInComponent, ClassesThatADescriptionEntersAreMade) {
  publishManager();
  registerBuiltInComponent();
  enterClasses();
  void* app = nullptr;
  void* again = nullptr;
  EXPECT_EQ(create(kCowlAppClass, "IAppCustomizer", &app), 1);
  EXPECT_EQ(create(kCowlAppClass, "IAppCustomizer", &again), 1);
  EXPECT_NE(app, nullptr);
  EXPECT_EQ(app, again);
  EXPECT_FALSE(broker_->hasService(KelCString::borrow("IAppCustomizer")));
  void* adder = nullptr;
  EXPECT_EQ(create(kCowlImageAdderClass, "IOroInitializer", &adder), 1);
  const IPtr<IOroInitializer> owner(static_cast<IOroInitializer*>(adder));
  void* second = nullptr;
  EXPECT_EQ(create(kCowlImageAdderClass, "IOroInitializer", &second), 1);
  const IPtr<IOroInitializer> secondOwner(static_cast<IOroInitializer*>(second));
  EXPECT_NE(adder, second);
}

TEST_F(BuiltInComponent, AClassThatItDoesNotHaveFailsWithNoCodeOfTheBroker) {
  publishManager();
  registerBuiltInComponent();
  constexpr GUID other = {
      0x1E94C4F5, 0x4B50, 0x447B, {0xAB, 0xDD, 0x81, 0x69, 0x0E, 0xE6, 0xF6, 1}};
  broker_->registerClass(other, kCowlComponentId, KelCStringSet(), KelCString("Other"));
  void* found = nullptr;
  EXPECT_EQ(create(other, "IOroUnknown", &found), 0);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(broker_->getLastStatus(), 0);
}

}  // namespace
