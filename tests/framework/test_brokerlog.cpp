#include "framework/brokerlog.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "platform/process.h"
#include "tests/framework/brokerfixture.h"
#include "tests/tempfolder.h"

namespace {

using tests::FakeObject;

constexpr const char* kVariable = "OroObjectBrokerLog";

class BrokerLog : public tests::BrokerFixture {
 protected:
  BrokerLog() {
    const std::u8string path = folder_.file("classes.log").u8string();
    useVariable(std::string(path.begin(), path.end()));
  }
  ~BrokerLog() override {
    useVariable(std::nullopt);
    testaccess::resetBrokerLog();
  }

  // A new broker that finds the variable so.
  void useVariable(const std::optional<std::string>& value) {
    broker_.reset();
    testaccess::resetBrokerLog();
    platform::setEnvironment(kVariable, value);
    broker_.emplace(&manager_);
    oroSetBroker(&*broker_);
  }
  // The log as it stands, times blanked out: a digit of minutes and below is "0", hours are "hh".
  std::string log() {
    std::string text = folder_.read("classes.log");
    text = std::regex_replace(text, std::regex("( |^|\n)( ?\\d|\\d\\d):\\d\\d:\\d\\d\\.\\d\\d\\d"),
                              "$1hh:00:00.000");
    std::erase(text, '\r');
    return text;
  }
  void create(const char* interfaceName) {
    void* found = nullptr;
    broker_->createObject(kClass, name(interfaceName), &found);
  }

  tests::TempFolder folder_;
};

TEST_F(BrokerLog, EachObjectThatWasMadeIsALineAtOnce) {
  FakeObject object;
  provide(1, [&] { return &object; });
  EXPECT_EQ(log(), "");
  create("IFakeService");
  EXPECT_EQ(log(), "hh:00:00.000  IFakeService\n");
  create("IFakeService");
  EXPECT_EQ(log(), "hh:00:00.000  IFakeService\nhh:00:00.000  IFakeService\n");
}

TEST_F(BrokerLog, HourIsPaddedWithABlankAndTheLineEndsAsTheSystemsDo) {
  FakeObject object;
  provide(1, [&] { return &object; });
  create("IFakeService");
  const std::string text = folder_.read("classes.log");
  EXPECT_TRUE(std::regex_match(
      text, std::regex("( \\d|[12]\\d):[0-5]\\d:[0-6]\\d\\.\\d\\d\\d  IFakeService\\r?\\n")))
      << text;
}

TEST_F(BrokerLog, InterfaceThatTheObjectLacksIsLoggedToo) {
  FakeObject object;
  provide(1, [&] { return &object; });
  create("IFakeOther");
  EXPECT_EQ(log(), "hh:00:00.000  IFakeOther\n");
}

TEST_F(BrokerLog, FailuresPublishedServicesAndQuestionsAreNotLogged) {
  FakeObject object;
  provide(0, [&] { return &object; });
  create("IFakeService");
  component_.status = 1;
  broker_->registerService(name("IFakeService"), new FakeObject);
  void* found = nullptr;
  broker_->getService(name("IFakeService"), &found);
  broker_->setClassObject(kOtherClass, new FakeObject);
  broker_->createObject(kOtherClass, name("IFakeService"), &found);
  broker_->hasService(name("IFakeService"));
  broker_->classSupports(kClass, name("IFakeService"));
  EXPECT_EQ(log(), "");
}

TEST_F(BrokerLog, FileIsBegunAnew) {
  folder_.write("old.log", "old lines\n");
  const std::u8string path = folder_.file("old.log").u8string();
  useVariable(std::string(path.begin(), path.end()));
  EXPECT_EQ(folder_.read("old.log"), "");
}

TEST_F(BrokerLog, VariableIsReadOnceInTheLifeOfTheProcess) {
  useVariable(std::nullopt);
  const std::u8string path = folder_.file("late.log").u8string();
  platform::setEnvironment(kVariable, std::string(path.begin(), path.end()));
  FakeObject object;
  provide(1, [&] { return &object; });
  create("IFakeService");
  const OroObjectBroker group(&manager_, name("side"));
  EXPECT_FALSE(std::filesystem::exists(folder_.file("late.log")));
}

TEST_F(BrokerLog, FileThatCannotBeOpenedIsNoLog) {
  useVariable(std::string("no such folder/classes.log"));
  FakeObject object;
  provide(1, [&] { return &object; });
  create("IFakeService");
  EXPECT_EQ(broker_->getLastStatus(), 1);
}

TEST_F(BrokerLog, GroupBrokersWriteToItAndDoNotEndIt) {
  FakeObject object;
  component_.give = [&] { return &object; };
  {
    OroObjectBroker group(&manager_, name("side"));
    group.registerClass(kClass, kComponent, {}, name("KelClass"));
    void* found = nullptr;
    group.createObject(kClass, name("IFakeService"), &found);
  }
  provide(1, [&] { return &object; });
  create("IFakeOther");
  EXPECT_EQ(log(), "hh:00:00.000  IFakeService\nhh:00:00.000  IFakeOther\n");
}

TEST_F(BrokerLog, EndsWithTheProcesssBroker) {
  broker_.reset();
  brokerlog::write(name("IFakeService"));  // and is not opened again
  EXPECT_EQ(folder_.read("classes.log"), "");
}

}  // namespace
