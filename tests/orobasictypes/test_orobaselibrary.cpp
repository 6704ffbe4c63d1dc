#include "orobasictypes/orobaselibrary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interfaces/IKelFileMagic.h"
#include "interfaces/ILogFile.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/oroobject.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/testaccess.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"

namespace {

using ::testing::ElementsAre;

class Cleanup : public OroObject {
 public:
  Cleanup(std::vector<std::string>& events, const char* name) : events_(events), name_(name) {}
  ~Cleanup() override { events_.push_back(name_); }

 private:
  std::vector<std::string>& events_;
  const char* name_;
};

// Registers another one while it goes.
class LateCleanup : public Cleanup {
 public:
  explicit LateCleanup(std::vector<std::string>& events) : Cleanup(events, "first"), of_(events) {}
  ~LateCleanup() override { oroRegisterCleanup(new Cleanup(of_, "late")); }

 private:
  std::vector<std::string>& of_;
};

class FileMagic : public IKelFileMagic {
 public:
  static constexpr const char* className() { return "FileMagic"; }
  using Offers = OroOffers<FileMagic, IKelFileMagic>;
  explicit FileMagic(std::vector<std::string>& events) : events_(events) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void end() override { events_.push_back("magic"); }

 private:
  std::vector<std::string>& events_;
};

class LogFile : public ILogFile {
 public:
  static constexpr const char* className() { return "LogFile"; }
  using Offers = OroOffers<LogFile, ILogFile>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

class BaseLibraryTest : public ::testing::Test {
 protected:
  BaseLibraryTest() {
    testaccess::resetModule();
    testaccess::resetLogFile();
  }
  ~BaseLibraryTest() override {
    testaccess::resetLogFile();
    testaccess::resetModule();
  }

  std::vector<std::string> events_;
};

TEST_F(BaseLibraryTest, RegisteredObjectsGoTheNewestFirstAndBeforeTheFileTypes) {
  tests::FakeBroker broker;
  broker.registerService(KelCString("IKelFileMagic"), new FileMagic(events_));
  for (const char* name : {"a", "b", "c"}) oroRegisterCleanup(new Cleanup(events_, name));
  oroBaseLibraryEnd();
  EXPECT_THAT(events_, ElementsAre("c", "b", "a", "magic"));
}

TEST_F(BaseLibraryTest, ASecondEndFindsNoObjectsLeft) {
  oroRegisterCleanup(new Cleanup(events_, "a"));
  oroBaseLibraryEnd();
  oroBaseLibraryEnd();
  EXPECT_THAT(events_, ElementsAre("a"));
  oroRegisterCleanup(new Cleanup(events_, "b"));
  oroBaseLibraryEnd();
  EXPECT_THAT(events_, ElementsAre("a", "b"));
}

TEST_F(BaseLibraryTest, AnObjectThatIsRegisteredDuringTheEndGoesAsWell) {
  oroRegisterCleanup(new LateCleanup(events_));
  oroBaseLibraryEnd();
  EXPECT_THAT(events_, ElementsAre("first", "late"));
}

TEST_F(BaseLibraryTest, StringsCanBeUsedAfterTheEnd) {
  const OroString kept("made before");
  oroBaseLibraryEnd();
  EXPECT_TRUE(kept == "made before");
  EXPECT_TRUE(OroString::empty().isEmpty());
  EXPECT_TRUE(OroString("made after") == "made after");
}

TEST_F(BaseLibraryTest, ServicesOutliveTheEnd) {
  tests::FakeBroker broker;
  const IPtr<FileMagic> magic = new FileMagic(events_);
  broker.registerService(KelCString("IKelFileMagic"), magic.get());
  oroBaseLibraryEnd();
  oroBaseLibraryEnd();
  EXPECT_THAT(events_, ElementsAre("magic", "magic"));
  EXPECT_EQ(magic->refCount(), 2);
}

TEST(IKelFileMagicTest, TheEndIsTheFirstOperation) {
  EXPECT_EQ(tests::slotNumber(&IKelFileMagic::end), 1);
}

TEST_F(BaseLibraryTest, TheLogFileIsAskedForUntilThereIsOneAndKeptThen) {
  kelPoolShutdown();
  kelPoolInstance();  // a pool that does not look for the service of pools
  EXPECT_EQ(oroLogFile(), nullptr);
  tests::FakeBroker broker;
  EXPECT_EQ(oroLogFile(), nullptr);
  EXPECT_EQ(oroLogFile(), nullptr);
  EXPECT_EQ(broker.serviceRequests, 2);
  const IPtr<LogFile> log = new LogFile;
  broker.registerService(KelCString("ILogFile"), log.get());
  EXPECT_EQ(oroLogFile(), log.get());
  EXPECT_EQ(oroLogFile(), log.get());
  EXPECT_EQ(broker.serviceRequests, 3);
  EXPECT_EQ(log->refCount(), 3);
  testaccess::resetLogFile();
}

}  // namespace
