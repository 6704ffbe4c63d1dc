// The init server with a description of the test's own, at the broker and manager of a start.

#include "components/initserver/kelinitserver.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "framework/kelcomponentmanager.h"
#include "framework/oroobjectbroker.h"
#include "gui/apps/main/appglobals.h"
#include "gui/apps/main/oroappmain.h"
#include "interfaces/IOroComponentManagerV2.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroInitializer.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/text.h"
#include "tests/gui/apps/main/appworld.h"
#include "tests/gui/apps/main/double.h"
#include "tests/tempfolder.h"

namespace {

struct Initializer : tests::Double<Initializer, IOroInitializer> {
  static constexpr const char* className() { return "Initializer"; }
  std::function<void()> onInitialize;
  void initialize() override { onInitialize(); }
};

constexpr GUID idOf(uint32_t first) { return {first, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}; }

constexpr const char* kDescriptionHead = "cowl-application 1\n";

class InitServer : public testing::Test {
 protected:
  void SetUp() override {
    application_.initEssential();
    SPtr<IOroDirService> directories;
    directories->setDir("components", OroPath(OroString(folder_.path().u16string().c_str())));
    server_->setClassRegistration(oroAppGlobals().classRegistration);
  }

  bool read(const std::string& description) {
    folder_.write("cowl.description", kDescriptionHead + description);
    return server_->readDescription(0);
  }
  std::string shown() { return platform::toUtf8Lossy(world_.boxText()); }
  OroObjectBroker& broker() { return *oroAppGlobals().broker; }

  // The broker gives this object for the class from now on.
  void give(IOroObjBroker& broker, const GUID& classId, const char* note) {
    auto* const object = new Initializer();
    object->onInitialize = [this, note] { initialized_.emplace_back(note); };
    broker.setClassObject(classId, object);
  }

  tests::TempFolder folder_;
  tests::AppWorld world_;
  OroAppMain application_;
  IPtr<KelInitServer> server_{new KelInitServer};
  std::vector<std::string> initialized_;
};

TEST_F(InitServer, MakesRegistryComponentsClassesAndDefaultsKnown) {
  ASSERT_TRUE(
      read("registry PRODUCT_INFO/appName Test\n"
           "component some {00000001-0002-0003-0405-060708090A0B} name \"Some library\"\n"
           "class SomeClass {00000002-0002-0003-0405-060708090A0B} tags a,b\n"
           "default ISome\n"));
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(tests::registryText("PRODUCT_INFO/appName"), "Test");
  auto* const manager = oroQuery<IOroComponentManagerV2>(
      static_cast<IOroComponentManager*>(oroAppGlobals().componentManager));
  ASSERT_NE(manager, nullptr);
  OroString path;
  KelCString name;
  EXPECT_TRUE(manager->getLibraryPath(idOf(1), KelCString(), path));
  EXPECT_TRUE(path == OroPath(oroDirPath("components")).joined("some"));
  EXPECT_TRUE(manager->getComponentName(idOf(1), KelCString(), name));
  EXPECT_STREQ(name.c_str(), "Some library");
  GUID component = {};
  EXPECT_EQ(broker().getComponentId(idOf(2), component), 1);
  EXPECT_EQ(component, idOf(1));
  EXPECT_EQ(broker().registerInterface(KelCString("ISome"), idOf(9)), 0);  // taken
}

TEST_F(InitServer, LoadsNothing) {
  ASSERT_TRUE(
      read("component absent {00000001-0002-0003-0405-060708090A0B}\n"
           "class SomeClass {00000002-0002-0003-0405-060708090A0B}\n"));
  EXPECT_EQ(shown(), "");
}

TEST_F(InitServer, RunsTheInitializersInTheirOrder) {
  give(broker(), idOf(2), "first");
  give(broker(), idOf(3), "unlisted");
  give(broker(), idOf(4), "second");
  ASSERT_TRUE(
      read("component some {00000001-0002-0003-0405-060708090A0B}\n"
           "class A {00000002-0002-0003-0405-060708090A0B}\ninitializer\n"
           "class B {00000003-0002-0003-0405-060708090A0B}\n"
           "class C {00000004-0002-0003-0405-060708090A0B}\ninitializer\n"));
  EXPECT_EQ(initialized_, (std::vector<std::string>{"first", "second"}));
}

TEST_F(InitServer, KeepsTheClassesOfANamedGroupToThatGroup) {
  IOroObjBroker* const group = broker().groupBroker(KelCString("g"), true);
  give(*group, idOf(2), "of the group");
  give(broker(), idOf(2), "of the default group");
  ASSERT_TRUE(
      read("component some {00000001-0002-0003-0405-060708090A0B} group g\n"
           "class A {00000002-0002-0003-0405-060708090A0B}\ninitializer\n"
           "default ISome\n"));
  EXPECT_EQ(initialized_, (std::vector<std::string>{"of the group"}));
  GUID component = {};
  EXPECT_EQ(group->getComponentId(idOf(2), component), 1);
  EXPECT_EQ(broker().getComponentId(idOf(2), component), 0);
  EXPECT_EQ(group->registerInterface(KelCString("ISome"), idOf(9)), 0);    // taken there
  EXPECT_EQ(broker().registerInterface(KelCString("ISome"), idOf(9)), 1);  // and free here
}

TEST_F(InitServer, AnInitializerThatCannotBeHadIsReportedAndTheStartGoesOn) {
  give(broker(), idOf(3), "second");
  ASSERT_TRUE(
      read("component absent {00000001-0002-0003-0405-060708090A0B}\n"
           "class A {00000002-0002-0003-0405-060708090A0B}\ninitializer\n"
           "class B {00000003-0002-0003-0405-060708090A0B}\ninitializer\n"));
  EXPECT_NE(shown().find("absent"), std::string::npos) << shown();
  EXPECT_EQ(initialized_, (std::vector<std::string>{"second"}));
}

TEST_F(InitServer, ADamagedDescriptionIsOneErrorAndNothingOfItCounts) {
  EXPECT_FALSE(read("registry PRODUCT_INFO/appName Test\nnonsense\n"));
  EXPECT_NE(shown().find("cowl.description, line 3: the statement \"nonsense\" is unknown"),
            std::string::npos)
      << shown();
  EXPECT_EQ(shown().find("ERROR:", 1), std::string::npos);
  EXPECT_EQ(tests::registryText("PRODUCT_INFO/appName"), "<absent>");
}

TEST_F(InitServer, AMissingOrTooLargeDescriptionIsAnError) {
  EXPECT_FALSE(server_->readDescription(0));
  EXPECT_NE(shown().find("Cannot read the application description "), std::string::npos);
  EXPECT_FALSE(read(std::string(2 << 20, '\n')));
  EXPECT_NE(shown().find("the file is too large for a description"), std::string::npos);
}

TEST_F(InitServer, WithoutARegistrationNothingIsRead) {
  server_->setClassRegistration(nullptr);
  EXPECT_FALSE(read("registry PRODUCT_INFO/appName Test\n"));
  EXPECT_EQ(tests::registryText("PRODUCT_INFO/appName"), "<absent>");
}

}  // namespace
