#include <gtest/gtest.h>

#include <string>

#include "components/kit/orocomponentbase.h"
#include "framework/mapentry.h"
#include "framework/staticentrypoints.h"
#include "interfaces/IOroComponent.h"
#include "tests/framework/fakes.h"
#include "tests/framework/managerfixture.h"

namespace {

constexpr GUID kLinked = testids::makeId(0x11AA0001);

int entryCalls = 0;

int linkedEntry(int32_t* version, IOroComponent** component) {
  ++entryCalls;
  *version = 100;
  *component = new tests::FakeComponent;
  return 1;
}

int wrongEntry(int32_t* version, IOroComponent**) {
  *version = 101;
  return 1;
}

class StaticLinkage : public tests::ManagerFixture {
 protected:
  StaticLinkage() {
    entryCalls = 0;
    manager_->setStaticLinkage(true);
  }
  // The component, and what was printed meanwhile.
  IOroComponent* request(const char* path, std::string& printed) {
    manager_->setLibraryPath(kLinked, KelCString(), OroString(path));
    testing::internal::CaptureStderr();
    IOroComponent* const found = component(kLinked);
    printed = testing::internal::GetCapturedStderr();
    std::erase(printed, '\r');
    return found;
  }

  std::string printed_;
};

TEST_F(StaticLinkage, IsOffAtFirst) {
  KelComponentManager other;
  EXPECT_FALSE(other.getStaticLinkage());
  other.setStaticLinkage(true);
  EXPECT_TRUE(other.getStaticLinkage());
}

TEST_F(StaticLinkage, ComponentComesFromTheTableByTheLoweredStem) {
  addStaticEntryPoint(OroString("linkedone"), linkedEntry);
  IOroComponent* const found = request("C:\\libs\\LinkedOne.dll", printed_);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(entryCalls, 1);
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(oroQueryClass<tests::FakeComponent>(found)->initialised, 1);
  EXPECT_EQ(component(kLinked), found);
  EXPECT_EQ(entryCalls, 1);
}

TEST_F(StaticLinkage, EndingAComponentWithoutALibraryFreesNone) {
  addStaticEntryPoint(OroString("linkedone"), linkedEntry);
  request("linkedone", printed_);
  EXPECT_TRUE(manager_->unloadComponent(kLinked, KelCString()));
  EXPECT_NE(request("linkedone", printed_), nullptr);
}

TEST_F(StaticLinkage, MissingNameIsPrintedAndNotReported) {
  EXPECT_EQ(request("libs\\NotLinked.dll", printed_), nullptr);
  EXPECT_EQ(printed_, "Error: could not find entry point for library: notlinked\n");
  EXPECT_TRUE(errors_.texts.empty());
  EXPECT_EQ(manager_->getLastStatus(), 1);
  request("libs\\NotLinked.dll", printed_);  // the row that the look-up left is none either
  EXPECT_EQ(printed_, "Error: could not find entry point for library: notlinked\n");
}

TEST_F(StaticLinkage, NameEnteredWithCapitalsIsNeverFound) {
  addStaticEntryPoint(OroString("Capital"), linkedEntry);
  EXPECT_EQ(request("Capital", printed_), nullptr);
  EXPECT_EQ(entryCalls, 0);
}

TEST_F(StaticLinkage, LibrariesAreNotLoaded) {
  known(testids::kRecorder, "fw_recorder");
  testing::internal::CaptureStderr();
  EXPECT_EQ(component(testids::kRecorder), nullptr);
  testing::internal::GetCapturedStderr();
  EXPECT_TRUE(journal_.notes.empty());
}

TEST_F(StaticLinkage, ContractIsTheSame) {
  addStaticEntryPoint(OroString("wrongone"), wrongEntry);
  EXPECT_EQ(request("wrongone", printed_), nullptr);
  EXPECT_EQ(printed_, "");
}

TEST_F(StaticLinkage, LaterEntryOfANameReplacesTheEarlier) {
  addStaticEntryPoint(OroString("replaced"), wrongEntry);
  addStaticEntryPoint(OroString("replaced"), linkedEntry);
  EXPECT_EQ(staticEntryPoint(OroString("replaced")), &linkedEntry);
}

TEST_F(StaticLinkage, KitLeavesTheIdentityOfTheHostAlone) {
  const OroComponentRecord record{"linked", kLinked, {}};
  OroComponentBase component(record);
  component.initialise(broker_.get());
  component.setGroupName(KelCString("alpha"));
  EXPECT_EQ(oroBroker(), broker_.get());
  EXPECT_STREQ(oroModuleIdentity().componentName.text(), "cowlcomponent");
  EXPECT_TRUE(oroModuleIdentity().componentId.isNull());
  EXPECT_TRUE(oroModuleIdentity().groupName.isEmpty());
}

TEST_F(StaticLinkage, EntryAnswersToItsNamesAlone) {
  addStaticEntryPoint(OroString("linkedone"), linkedEntry);
  mapEntry entry(OroString("linkedone"), *manager_, broker_.get());
  EXPECT_TRUE(entry.isLoaded());
  EXPECT_STREQ(entry.getClassName(), "mapEntry");
  EXPECT_NE(oroQuery<IOroComponentContainer>(&entry), nullptr);
  EXPECT_EQ(oroQuery<IOroComponent>(&entry), nullptr);
  EXPECT_EQ(oroQueryClass<mapEntry>(&entry), &entry);
}

}  // namespace
