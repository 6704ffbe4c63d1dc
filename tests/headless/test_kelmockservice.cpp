#include "headless/kelmockservice.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/blackbox/childprocess.h"
#include "tests/headless/headlessworld.h"
#include "tests/tempfolder.h"

namespace {

class MockService : public testing::Test {
 protected:
  // Makes the service with a log file; records() is what stands in it without the frame.
  void openLog() {
    world_.setLogFile(folder_.file("log").string());
    service_ = new KelMockService();
  }
  void openNothing() { service_ = new KelMockService(); }

  std::string records() {
    std::string text = tests::plainLines(folder_.read("log"));
    return text.substr(0, 6) == "<log>\n" ? text.substr(6) : "no header: " + text;
  }

  std::string currentAction() {
    OroString text(u"left over");
    static_cast<IGuiBusyState*>(service_.get())->currentAction(text);
    return text.toNarrow();
  }
  std::string currentCommand() {
    OroString text(u"left over");
    service_->currentCommand(text);
    return text.toNarrow();
  }

  tests::TempFolder folder_;
  tests::HeadlessWorld world_;
  IPtr<KelMockService> service_;
  int id_ = 0;
  int otherId_ = 0;
};

TEST_F(MockService, AnswersForItsClassAndEightInterfaces) {
  openNothing();
  for (const char* name :
       {"KelMockService", "IOroUnknown", "IGuiBusyState", "IGuiStatusBar", "IOroProgress",
        "IGuiCursor", "IGuiThemeMgr", "IInfoBar", "IInfoBar2", "IOroErrorListener"}) {
    void* found = nullptr;
    service_->queryInterface(name, &found);
    EXPECT_NE(found, nullptr) << name;
  }
  void* found = service_.get();
  service_->queryInterface("IDataStore", &found);
  EXPECT_EQ(found, nullptr);
  EXPECT_STREQ(service_->getClassName(), "KelMockService");
}

TEST_F(MockService, KeepsTheStacksWithoutASink) {
  openNothing();
  service_->startAction(&id_, OroString("Read"));
  service_->startCommand(&id_, OroString("Open"));
  EXPECT_EQ(currentAction(), "Read");
  EXPECT_EQ(currentCommand(), "Open");
  service_->setPercent(50);
  service_->stopAction(&id_);
  service_->stopCommand(&id_);
  EXPECT_EQ(currentAction(), "");
  EXPECT_EQ(currentCommand(), "");
  service_->closeSinks();
}

TEST_F(MockService, RecordsCommandsAndActions) {
  openLog();
  service_->startCommand(&id_, OroString("Open File"));
  service_->startAction(&id_, OroString("Reading"));
  service_->setAction(&id_, OroString("Sorting"));
  service_->stopAction(&id_);
  service_->stopCommand(&id_);
  EXPECT_EQ(records(),
            "<start cmd=\"Open File\"/>\n<start action=\"Reading\"/>\n"
            "<set action=\"Sorting\"/>\n<stop action=\"Sorting\"/>\n<stop cmd=\"Open File\"/>\n");
}

TEST_F(MockService, StopOfAnUnknownIdRecordsAnEmptyText) {
  openLog();
  service_->startCommand(&id_, OroString("Open"));
  service_->stopCommand(&otherId_);
  service_->stopAction(&otherId_);
  EXPECT_EQ(records(), "<start cmd=\"Open\"/>\n<stop cmd=\"\"/>\n<stop action=\"\"/>\n");
  EXPECT_EQ(currentCommand(), "Open");
}

TEST_F(MockService, SetOfAnUnknownActionRecordsTheNewTextAndChangesNone) {
  openLog();
  service_->startAction(&id_, OroString("Read"));
  service_->setAction(&otherId_, OroString("Sort"));
  EXPECT_EQ(records(), "<start action=\"Read\"/>\n<set action=\"Sort\"/>\n");
  EXPECT_EQ(currentAction(), "Read");
}

TEST_F(MockService, BusyTextGoesToTheTopActionAndIsRecordedWithoutOneToo) {
  openLog();
  service_->setBusyText(OroString("nothing"));
  service_->startAction(&id_, OroString("a"));
  service_->startAction(&otherId_, OroString("b"));
  service_->setBusyText(OroString("c"));
  EXPECT_EQ(currentAction(), "c");
  service_->stopAction(&otherId_);
  EXPECT_EQ(currentAction(), "a");
  EXPECT_EQ(records(),
            "<set action=\"nothing\"/>\n<start action=\"a\"/>\n<start action=\"b\"/>\n"
            "<set action=\"c\"/>\n<stop action=\"c\"/>\n");
}

TEST_F(MockService, RepeatedPercentIsWrittenOnce) {
  openLog();
  service_->setPercent(50);
  service_->setPercent(50);
  EXPECT_EQ(records(), " <prog done=\"50\"/>\n");
}

TEST_F(MockService, EveryStartStopAndSetLetsThePercentCountAgain) {
  openLog();
  const std::string percent = " <prog done=\"50\"/>\n";
  std::string expected = percent;
  service_->setPercent(50);
  const auto step = [&](const std::string& record) {
    service_->setPercent(50);
    service_->setPercent(50);
    expected += record + percent;
  };
  service_->startAction(&id_, OroString("a"));
  step("<start action=\"a\"/>\n");
  service_->setAction(&id_, OroString("b"));
  step("<set action=\"b\"/>\n");
  service_->setBusyText(OroString("c"));
  step("<set action=\"c\"/>\n");
  service_->stopAction(&id_);
  step("<stop action=\"c\"/>\n");
  service_->startCommand(&id_, OroString("d"));
  step("<start cmd=\"d\"/>\n");
  service_->stopCommand(&id_);
  step("<stop cmd=\"d\"/>\n");
  EXPECT_EQ(records(), expected);
}

TEST_F(MockService, AnErrorDoesNotLetThePercentCountAgain) {
  openLog();
  const int32_t severity = 1;
  service_->setPercent(50);
  service_->onError(OroString("bad"), &severity, KelCString());
  service_->setPercent(50);
  EXPECT_EQ(records(), " <prog done=\"50\"/>\n<Error=\"bad\"/>\n");
}

TEST_F(MockService, TheFirstPercentOfMinusOneIsARepetition) {
  openLog();
  service_->setPercent(-1);
  EXPECT_EQ(records(), "");
}

TEST_F(MockService, TheLastPercentOutlivesTheServiceAndIsKeptWithoutASink) {
  openNothing();
  service_->setPercent(30);
  openLog();
  service_->setPercent(30);
  service_->setPercent(31);
  EXPECT_EQ(records(), " <prog done=\"31\"/>\n");
}

TEST_F(MockService, ProgressRoundsAndTheInfoBarCuts) {
  openLog();
  EXPECT_TRUE(service_->Update(0.4921875f));  // 63/128: 49.21875
  EXPECT_TRUE(service_->Update(0.9609375f));  // 123/128: 96.09375
  EXPECT_TRUE(service_->Update(0.5078125f));  // 65/128: 50.78125
  EXPECT_EQ(records(), " <prog done=\"49\"/>\n <prog done=\"96\"/>\n <prog done=\"51\"/>\n");
  service_->setFraction(0.5078125f);
  service_->setFractionFor(&id_, 0.9921875f);  // 127/128: 99.21875
  service_->setFraction(1.0f);
  EXPECT_EQ(records(),
            " <prog done=\"49\"/>\n <prog done=\"96\"/>\n <prog done=\"51\"/>\n"
            " <prog done=\"50\"/>\n <prog done=\"99\"/>\n <prog done=\"100\"/>\n");
}

TEST_F(MockService, AFractionThatIsNoNumberOfPercentIsTheSmallestInteger) {
  openLog();
  service_->setFraction(std::numeric_limits<float>::quiet_NaN());
  service_->setPercent(0);
  service_->Update(1e30f);
  EXPECT_EQ(records(),
            " <prog done=\"-2147483648\"/>\n <prog done=\"0\"/>\n"
            " <prog done=\"-2147483648\"/>\n");
}

TEST_F(MockService, EveryWayToSetThePercentEndsInOneRecord) {
  openLog();
  static_cast<IInfoBar*>(service_.get())->setPercent(1);
  static_cast<IGuiBusyState*>(service_.get())->setPercent(2);
  service_->setProgress(3);
  service_->clearPercent();
  EXPECT_EQ(records(),
            " <prog done=\"1\"/>\n <prog done=\"2\"/>\n <prog done=\"3\"/>\n"
            " <prog done=\"0\"/>\n");
}

TEST_F(MockService, StatusTextsAreNoRecords) {
  openLog();
  service_->setStatusText(OroString("here"));
  service_->clearStatusText();
  EXPECT_EQ(records(), "");
}

TEST_F(MockService, BusyFormsAreActionsAndANullIdIsTheServiceItself) {
  openLog();
  service_->startBusy(OroString("1"), 1, nullptr);
  service_->startBusy2(OroString("2"), 1, &id_);
  service_->startBusy3(OroString("8"), 1, nullptr);
  service_->startBusy4(OroString("9"), 1, &otherId_);
  service_->stopBusy(0, 0, nullptr);
  service_->stopBusy2(0, 0, &id_);
  service_->stopAction(service_.get());
  service_->stopBusy2(0, 0, &otherId_);
  EXPECT_EQ(records(),
            "<start action=\"1\"/>\n<start action=\"2\"/>\n<start action=\"8\"/>\n"
            "<start action=\"9\"/>\n<stop action=\"8\"/>\n<stop action=\"2\"/>\n"
            "<stop action=\"1\"/>\n<stop action=\"9\"/>\n");
}

TEST_F(MockService, EverySeverityButOneIsAWarning) {
  openLog();
  for (const int32_t severity : {0, 1, 2, -1, 7}) {
    service_->onError(OroString("t"), &severity, KelCString("dropped"));
  }
  EXPECT_EQ(records(),
            "<Warning=\"t\"/>\n<Error=\"t\"/>\n<Warning=\"t\"/>\n<Warning=\"t\"/>\n"
            "<Warning=\"t\"/>\n");
}

TEST_F(MockService, AnswersQueriesWithNeutralValues) {
  openNothing();
  int32_t low = 5;
  int32_t high = 5;
  service_->getRange(&low, &high);
  EXPECT_EQ(low, 0);
  EXPECT_EQ(high, 100);
  EXPECT_FALSE(service_->IsCancelled());
  EXPECT_TRUE(service_->isEnabled());
  EXPECT_TRUE(service_->isThemed());
  EXPECT_EQ(service_->resolve(17), 17);
  IGuiCursor* cursor = service_.get();
  EXPECT_EQ(cursor->unusedSlot1(), 0);
  EXPECT_EQ(cursor->unusedSlot4(), 0);
  IGuiThemeMgr* theme = service_.get();
  EXPECT_EQ(theme->unusedSlot15(), 0);
}

TEST_F(MockService, KnowsTheTextOfAPlainWindowsCloseButton) {
  openNothing();
  OroString text(u"left over");
  service_->closeText(text, 1);
  EXPECT_TRUE(text == "Close Window");
  service_->closeText(text, 0);
  EXPECT_TRUE(text.isEmpty());
  service_->closeText(text, 2);
  EXPECT_TRUE(text.isEmpty());
}

TEST_F(MockService, ReadsItsSettingsWhenItIsMade) {
  openLog();
  world_.setLogFile(folder_.file("later").string());
  service_->startCommand(&id_, OroString("x"));
  EXPECT_EQ(records(), "<start cmd=\"x\"/>\n");
  EXPECT_FALSE(std::filesystem::exists(folder_.file("later")));
}

TEST_F(MockService, DropsEverythingAfterItsSinksAreClosed) {
  openLog();
  service_->closeSinks();
  service_->startCommand(&id_, OroString("late"));
  service_->setPercent(5);
  EXPECT_EQ(currentCommand(), "late");
  EXPECT_EQ(records(), "</log>\n");
}

TEST_F(MockService, LivesWithoutSettings) {
  tests::FakeBroker empty;
  service_ = new KelMockService();
  service_->startCommand(&id_, OroString("x"));
  EXPECT_EQ(currentCommand(), "x");
  service_ = nullptr;
}

}  // namespace
