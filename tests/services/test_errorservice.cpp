#include "services/errorservice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interfaces/IOroErrorListener.h"
#include "interfaces/IOroLogfileListener.h"
#include "services/errorwinboxdisplay.h"
#include "services/logfilelistener.h"
#include "tests/services/recordinglistener.h"
#include "tests/services/servicetest.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

using ::testing::ElementsAre;
using tests::HeardError;
using tests::RecordingListener;

class ErrorServiceTest : public tests::ServiceTest {
 protected:
  // A listener that the service alone holds.
  RecordingListener* add(const char* name) {
    auto* const listener = new RecordingListener(heard_, name);
    service_->addListener(listener);
    return listener;
  }
  void report(const char* text, int32_t severity, const char* detail = "") {
    service_->report(OroString(text), severity, KelCString(detail));
  }
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const HeardError& error : heard_) names.push_back(error.listener);
    return names;
  }
  std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const HeardError& error : heard_) texts.push_back(error.text);
    return texts;
  }

  std::vector<HeardError> heard_;
  IPtr<ErrorService> service_ = new ErrorService(false);
};

TEST_F(ErrorServiceTest, AListenerAddedTwiceIsCalledOnceAndHoldsOneReference) {
  RecordingListener* const listener = add("a");
  service_->addListener(listener);
  EXPECT_EQ(listener->refCount(), 1);
  report("gone", 1);
  EXPECT_THAT(texts(), ElementsAre("gone"));
}

TEST_F(ErrorServiceTest, ANullListenerIsIgnored) {
  service_->addListener(nullptr);
  service_->removeListener(nullptr);
  add("a");
  report("still here", 1);
  EXPECT_THAT(texts(), ElementsAre("still here"));
}

TEST_F(ErrorServiceTest, ListenersAreCalledInTheOrderInWhichTheyWereAdded) {
  for (const char* name : {"a", "b", "c"}) add(name);
  report("x", 1);
  EXPECT_THAT(names(), ElementsAre("a", "b", "c"));
}

TEST_F(ErrorServiceTest, MoreListenersThanTheFirstRoomHolds) {
  for (int i = 0; i < 50; ++i) add("many");
  report("x", 1);
  EXPECT_EQ(heard_.size(), 50u);
}

TEST_F(ErrorServiceTest, RemovingClosesTheGapAndReleasesTheListener) {
  add("a");
  RecordingListener* const middle = add("b");
  add("c");
  service_->removeListener(middle);
  EXPECT_THAT(texts(), ElementsAre("(destroyed)"));
  heard_.clear();
  report("x", 1);
  EXPECT_THAT(names(), ElementsAre("a", "c"));
}

TEST_F(ErrorServiceTest, RemovingAnUnknownListenerChangesNothing) {
  add("a");
  RecordingListener stranger(heard_, "stranger");
  service_->removeListener(&stranger);
  report("x", 1);
  EXPECT_THAT(names(), ElementsAre("a"));
}

TEST_F(ErrorServiceTest, AListenerThatTakesItselfOutHidesTheReportFromTheNextOne) {
  IPtr<RecordingListener> leaver = add("a");
  leaver->during = [&] { service_->removeListener(leaver.get()); };
  add("b");
  add("c");
  report("x", 1);
  EXPECT_THAT(names(), ElementsAre("a", "c"));
  heard_.clear();
  report("y", 1);
  EXPECT_THAT(names(), ElementsAre("b", "c"));
}

TEST_F(ErrorServiceTest, AListenerAddedDuringAReportHearsIt) {
  RecordingListener* const first = add("a");
  first->during = [&] {
    first->during = nullptr;
    add("late");
  };
  report("x", 1);
  EXPECT_THAT(names(), ElementsAre("a", "late"));
}

TEST_F(ErrorServiceTest, AListenerMayReportOnTheSameThread) {
  RecordingListener* const listener = add("a");
  listener->during = [&] {
    listener->during = nullptr;
    report("inner", 0);
  };
  report("outer", 1);
  EXPECT_THAT(texts(), ElementsAre("outer", "inner"));
}

TEST_F(ErrorServiceTest, TextSeverityAndDetailReachTheListener) {
  add("a");
  report("warned", 0, "more");
  report("odd", 7);
  ASSERT_EQ(heard_.size(), 2u);
  EXPECT_EQ(heard_[0].text, "warned");
  EXPECT_EQ(heard_[0].severity, 0);
  EXPECT_EQ(heard_[0].detail, "more");
  EXPECT_EQ(heard_[1].severity, 7);
  EXPECT_EQ(heard_[1].detail, "");
}

TEST_F(ErrorServiceTest, AllListenersGetTheAddressOfOneSeverity) {
  add("a");
  add("b");
  report("x", 1);
  ASSERT_EQ(heard_.size(), 2u);
  EXPECT_EQ(heard_[0].severityAddress, heard_[1].severityAddress);
}

TEST_F(ErrorServiceTest, SeverityTwoAppendsTheContextsAndArrivesAsAnError) {
  add("a");
  service_->pushContext(OroString("opening a.xyz"));
  service_->pushContext(OroString("reading line 3"));
  report("bad number", 2);
  ASSERT_EQ(heard_.size(), 1u);
  EXPECT_EQ(heard_[0].text, "bad number\nopening a.xyz\nreading line 3");
  EXPECT_EQ(heard_[0].severity, 1);
}

TEST_F(ErrorServiceTest, SeverityTwoWithoutContextsIsAPlainError) {
  add("a");
  report("alone", 2);
  ASSERT_EQ(heard_.size(), 1u);
  EXPECT_EQ(heard_[0].text, "alone");
  EXPECT_EQ(heard_[0].severity, 1);
}

TEST_F(ErrorServiceTest, ContextsAreNotAddedToOtherSeverities) {
  add("a");
  service_->pushContext(OroString("opening"));
  for (const int32_t severity : {0, 1, 3}) report("plain", severity);
  EXPECT_THAT(texts(), ElementsAre("plain", "plain", "plain"));
}

TEST_F(ErrorServiceTest, TheCallersTextIsLeftAlone) {
  service_->pushContext(OroString("opening"));
  const OroString text("mine");
  service_->report(text, 2, KelCString());
  EXPECT_TRUE(text == "mine");
}

TEST_F(ErrorServiceTest, ContextsAreGivenBottomFirst) {
  service_->pushContext(OroString("outer"));
  service_->pushContext(OroString("inner"));
  OroStringArray contexts;
  contexts.append(OroString("dropped"));
  contexts.append(OroString("dropped"));
  contexts.append(OroString("dropped"));
  service_->getContext(contexts);
  ASSERT_EQ(contexts.lastIndex(), 2);
  EXPECT_TRUE(contexts[1] == "outer");
  EXPECT_TRUE(contexts[2] == "inner");
}

TEST_F(ErrorServiceTest, PopDropsTheInnermostContextAndDoesNothingOnAnEmptyStack) {
  OroStringArray contexts;
  service_->popContext();
  service_->getContext(contexts);
  EXPECT_EQ(contexts.lastIndex(), 0);
  service_->pushContext(OroString("outer"));
  service_->pushContext(OroString("inner"));
  service_->popContext();
  service_->getContext(contexts);
  ASSERT_EQ(contexts.lastIndex(), 1);
  EXPECT_TRUE(contexts[1] == "outer");
  service_->popContext();
  service_->popContext();
  service_->pushContext(OroString("first again"));
  service_->getContext(contexts);
  ASSERT_EQ(contexts.lastIndex(), 1);
  EXPECT_TRUE(contexts[1] == "first again");
}

TEST_F(ErrorServiceTest, ClearingDropsAllContexts) {
  add("a");
  for (int i = 0; i < 40; ++i) service_->pushContext(OroString(i));
  service_->clearContext();
  report("bare", 2);
  EXPECT_THAT(texts(), ElementsAre("bare"));
}

TEST_F(ErrorServiceTest, ReportsVanishWhileInactive) {
  add("a");
  EXPECT_TRUE(service_->isActive());
  EXPECT_TRUE(service_->setActive(false));
  EXPECT_FALSE(service_->isActive());
  report("lost", 1);
  EXPECT_TRUE(service_->setActive(true));
  EXPECT_TRUE(service_->isActive());
  report("heard", 1);
  EXPECT_THAT(texts(), ElementsAre("heard"));
}

TEST_F(ErrorServiceTest, OneFlagExistsAtTheStart) {
  const KelCString name("allowInteractiveAcknowledge");
  EXPECT_TRUE(service_->getFlag(name));
  service_->setFlag(name, false);
  EXPECT_FALSE(service_->getFlag(name));
  service_->setDefaultFlags();
  EXPECT_TRUE(service_->getFlag(name));
}

TEST_F(ErrorServiceTest, AnUnknownFlagIsFalse) {
  EXPECT_FALSE(service_->getFlag(KelCString("nobody's")));
  EXPECT_FALSE(service_->getFlag(KelCString("ALLOWINTERACTIVEACKNOWLEDGE")));
  EXPECT_FALSE(service_->getFlag(KelCString()));
}

TEST_F(ErrorServiceTest, AskingForAnUnknownFlagMakesNone) {
  const KelCString name("nobody's");
  const tests::FakeHeap heap;
  service_->getFlag(name);
  EXPECT_EQ(heap.allocations, 0);
}

TEST_F(ErrorServiceTest, FlagsAreKeptByName) {
  for (int i = 0; i < 100; ++i) {
    service_->setFlag(KelCString::fromTextAndInt("flag", i), i % 2 == 0);
  }
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(service_->getFlag(KelCString::fromTextAndInt("flag", i)), i % 2 == 0) << i;
  }
}

TEST_F(ErrorServiceTest, OnlyTheFirstMessageBoxListenerIsTakenOut) {
  add("a");
  for (int i = 0; i < 2; ++i) service_->addListener(new ErrorWinBoxDisplay(true));
  service_->removeWinBoxDisplay();
  report("one box", 1);
  EXPECT_EQ(boxes().size(), 1u);
  service_->removeWinBoxDisplay();
  service_->removeWinBoxDisplay();
  report("no box", 1);
  EXPECT_EQ(boxes().size(), 1u);
  EXPECT_THAT(texts(), ElementsAre("one box", "no box"));
}

TEST_F(ErrorServiceTest, TheBoxIsThereOnlyWhenAskedFor) {
  report("silent", 1);
  EXPECT_TRUE(boxes().empty());
  const IPtr<ErrorService> interactive = new ErrorService(true);
  interactive->report(OroString("loud"), 1, KelCString());
  ASSERT_EQ(boxes().size(), 1u);
  EXPECT_EQ(boxes()[0].text, u"ERROR:\nloud");
  interactive->removeWinBoxDisplay();
  interactive->report(OroString("silent again"), 1, KelCString());
  EXPECT_EQ(boxes().size(), 1u);
}

TEST_F(ErrorServiceTest, AWarningOpensNoBoxButReachesTheLogFile) {
  const IPtr<ErrorService> interactive = new ErrorService(true);
  auto* const log = new LogfileListener;
  interactive->addListener(log);
  log->setLogFile(base("reports.log"));
  interactive->report(OroString("careful"), 0, KelCString());
  EXPECT_TRUE(boxes().empty());
  EXPECT_EQ(folder_.read("reports.log").substr(0, 7), "careful");
}

TEST_F(ErrorServiceTest, ListenersAreReleasedFromTheLastToTheFirst) {
  for (const char* name : {"a", "b", "c"}) add(name);
  service_ = nullptr;
  EXPECT_THAT(names(), ElementsAre("c", "b", "a"));
}

TEST_F(ErrorServiceTest, TheServiceIsKnownToTheProcessWhileItLives) {
  EXPECT_EQ(ErrorService::current(), service_.get());
  service_ = nullptr;
  EXPECT_EQ(ErrorService::current(), nullptr);
}

TEST_F(ErrorServiceTest, ItDoesNotPublishItself) {
  EXPECT_FALSE(broker_.hasService(KelCString("IOroErrorService")));
}

TEST_F(ErrorServiceTest, ItAnswersForItsClassAndItsInterface) {
  EXPECT_EQ(oroQuery<IOroErrorService>(service_.get()), service_.get());
  EXPECT_EQ(oroQueryClass<ErrorService>(service_.get()), service_.get());
  EXPECT_EQ(oroQuery<IOroErrorListener>(service_.get()), nullptr);
  EXPECT_STREQ(service_->getClassName(), "ErrorService");
}

TEST(IOroErrorServiceTest, OperationsStandInTheirOrder) {
  using tests::slotNumber;
  EXPECT_EQ(slotNumber(&IOroErrorService::addListener), 1);
  EXPECT_EQ(slotNumber(&IOroErrorService::removeListener), 2);
  EXPECT_EQ(slotNumber(&IOroErrorService::report), 3);
  EXPECT_EQ(slotNumber(&IOroErrorService::setFlag), 4);
  EXPECT_EQ(slotNumber(&IOroErrorService::getFlag), 5);
  EXPECT_EQ(slotNumber(&IOroErrorService::removeWinBoxDisplay), 6);
  EXPECT_EQ(slotNumber(&IOroErrorService::pushContext), 7);
  EXPECT_EQ(slotNumber(&IOroErrorService::popContext), 8);
  EXPECT_EQ(slotNumber(&IOroErrorService::getContext), 9);
  EXPECT_EQ(slotNumber(&IOroErrorService::clearContext), 10);
  EXPECT_EQ(slotNumber(&IOroErrorService::setActive), 11);
  EXPECT_EQ(slotNumber(&IOroErrorService::isActive), 12);
  EXPECT_EQ(slotNumber(&IOroErrorListener::onError), 1);
  EXPECT_EQ(slotNumber(&IOroLogfileListener::onError), 1);
  EXPECT_EQ(slotNumber(&IOroLogfileListener::setLogFile), 2);
}

}  // namespace
