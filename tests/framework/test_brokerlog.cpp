#include "framework/brokerlog.h"

#include <gtest/gtest.h>

#include <algorithm>
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
  // The log as it stands, but each digit of a time is "d" and the first place of an hour, a blank
  // or a digit, is "h".
  std::string log() {
    std::string text = folder_.read("classes.log");
    std::erase(text, '\r');
    for (size_t line = 0; line < text.size(); line = text.find('\n', line) + 1) {
      constexpr size_t timeLength = 12;
      for (size_t i = line; i < line + timeLength && i < text.size(); ++i) {
        if (text[i] >= '0' && text[i] <= '9') text[i] = 'd';
      }
      if (text[line] == ' ' || text[line] == 'd') text[line] = 'h';
    }
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
  EXPECT_EQ(log(), "hd:dd:dd.ddd  IFakeService\n");
  create("IFakeService");
  EXPECT_EQ(log(), "hd:dd:dd.ddd  IFakeService\nhd:dd:dd.ddd  IFakeService\n");
}

TEST_F(BrokerLog, LinesEndAsTheSystemsDo) {
  FakeObject object;
  provide(1, [&] { return &object; });
  create("A");
  create("B");
  const std::string text = folder_.read("classes.log");
  const auto returns = std::count(text.begin(), text.end(), '\r');
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
  EXPECT_TRUE(returns == 0 || text.find("  A\r\n") != text.npos) << text;
  EXPECT_TRUE(returns == 0 || returns == 2) << text;
}

TEST_F(BrokerLog, InterfaceThatTheObjectLacksIsLoggedToo) {
  FakeObject object;
  provide(1, [&] { return &object; });
  create("IFakeOther");
  EXPECT_EQ(log(), "hd:dd:dd.ddd  IFakeOther\n");
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
  EXPECT_EQ(log(), "hd:dd:dd.ddd  IFakeService\nhd:dd:dd.ddd  IFakeOther\n");
}

TEST_F(BrokerLog, EndsWithTheProcesssBroker) {
  broker_.reset();
  brokerlog::write(name("IFakeService"));  // and is not opened again
  EXPECT_EQ(folder_.read("classes.log"), "");
}

}  // namespace
