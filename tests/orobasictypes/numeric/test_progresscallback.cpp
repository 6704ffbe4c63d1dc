#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/ioroprogressobject.h"
#include "orobasictypes/progresscallbackobject.h"
#include "tests/orobasictypes/numeric/fakeprogress.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::FakeProgress;

class Progress : public testing::Test {
 protected:
  Progress() {
    broker_.registerService(KelCString::borrow(IOroProgress::interfaceName()), service_.get());
  }
  std::vector<float> shown() { return service_->take(); }
  static void expectRange(ProgressCallbackBase& progress, int32_t from, int32_t to, uint32_t last) {
    int32_t start = 0;
    int32_t end = 0;
    uint32_t position = 0;
    progress.GetRange(start, end, position);
    EXPECT_EQ(start, from);
    EXPECT_EQ(end, to);
    EXPECT_EQ(position, last);
  }

  tests::FakeBroker broker_;
  const IPtr<FakeProgress> service_ = new FakeProgress;
};

TEST_F(Progress, HasItsOperationsAndFieldsInTheirPlaces) {
  using Base = ProgressCallbackBase;
  constexpr int destructor = 2;  // it takes two places
  const int places[] = {
      tests::slotNumber(&Base::SetPercentRange),
      tests::slotNumber(&Base::GetPercentRange),
      tests::slotNumber(&Base::SetRange),
      tests::slotNumber(&Base::GetRange),
      tests::slotNumber(&Base::Enable),
      tests::slotNumber(&Base::CopyTo),
      tests::slotNumber(&Base::CopyFrom),
      tests::slotNumber(&Base::Begin),
      tests::slotNumber(&Base::Step),
      tests::slotNumber(&Base::Report),
      tests::slotNumber(&Base::End),
      tests::slotNumber(&Base::SetCancellable),
      tests::slotNumber(&Base::IsCancelled),
      tests::slotNumber(&Base::SetShown),
      tests::slotNumber(&Base::SetCancelled),
      tests::slotNumber(&Base::GetFlags),
      tests::slotNumber(&Base::IsServiceCancelled),
      tests::slotNumber(&Base::SetProgress),
      tests::slotNumber(&Base::GetProgress),
  };
  int place = destructor;
  for (const int found : places) EXPECT_EQ(found, ++place);
  EXPECT_EQ(place - destructor, 19);

  ProgressCallbackObject progress;
  const ProgressCallbackBase& base = progress;
  const char* const bytes = reinterpret_cast<const char*>(&base);
  progress.SetRange(3, 5, 7);
  int32_t fields[3];
  std::memcpy(fields, bytes + 8, sizeof fields);
  EXPECT_THAT(fields, ElementsAre(3, 5, 7));
  EXPECT_EQ(bytes[20], 2);  // flags
  IOroProgress* service = nullptr;
  std::memcpy(&service, bytes + 24, sizeof service);
  EXPECT_EQ(service, service_.get());
}

TEST_F(Progress, StartsOnTheWholeBarAndMayBeCancelled) {
  ProgressCallbackObject progress;
  expectRange(progress, 0, 1000, 0);
  EXPECT_EQ(progress.GetFlags(), 2);
  EXPECT_EQ(progress.GetProgress(), service_.get());
  EXPECT_EQ(service_->refCount(), 2) << "the service is not counted: the test and the broker";
}

TEST_F(Progress, ReportsWithinItsRange) {
  ProgressCallbackObject progress;
  progress.SetPercentRange(25, 75);
  expectRange(progress, 250, 750, 0);
  EXPECT_TRUE(progress.Report(0.5F));
  expectRange(progress, 250, 750, 500);
  EXPECT_THAT(shown(), ElementsAre(0.5F));
}

TEST_F(Progress, ShowsAPositionOnce) {
  ProgressCallbackObject progress;
  progress.SetCancellable(false);
  EXPECT_TRUE(progress.Report(0.5F));
  EXPECT_TRUE(progress.Report(0.5F));
  EXPECT_TRUE(progress.Report(0.5001F));
  EXPECT_THAT(shown(), ElementsAre(0.5F));
  EXPECT_TRUE(progress.Report(0.501F));
  EXPECT_THAT(shown(), ElementsAre(static_cast<float>(501 * 0.001)));
}

TEST_F(Progress, FirstReportOfNothingShowsNothing) {
  ProgressCallbackObject progress;
  EXPECT_TRUE(progress.Report(0));
  EXPECT_THAT(shown(), ElementsAre(FakeProgress::asked));
}

TEST_F(Progress, MultipliesInFloats) {
  ProgressCallbackObject progress;
  progress.Report(0.29F);
  expectRange(progress, 0, 1000, 290);  // in doubles it would be 289
}

TEST_F(Progress, CutsTheWayThatItWentBeforeItAddsTheStart) {
  ProgressCallbackObject progress;
  progress.SetRange(1000, 0, 5);
  progress.Report(0.0005F);
  expectRange(progress, 1000, 0, 1000);  // half a step backwards is none
  progress.Report(0.0015F);
  expectRange(progress, 1000, 0, 999);
}

TEST_F(Progress, CutsFractionsToTheRange) {
  ProgressCallbackObject progress;
  progress.SetCancellable(false);
  progress.Report(7);
  progress.Report(-7);
  progress.Report(0.5F);
  progress.Report(std::nanf(""));
  progress.Report(std::numeric_limits<float>::infinity());
  EXPECT_THAT(shown(), ElementsAre(1.0F, 0.0F, 0.5F, 0.0F, 1.0F));
}

TEST_F(Progress, StepsDivideInFloats) {
  ProgressCallbackObject progress;
  progress.SetCancellable(false);
  EXPECT_TRUE(progress.Step(1, 4));
  EXPECT_TRUE(progress.Step(16777217, 33554432));
  EXPECT_THAT(shown(), ElementsAre(0.25F, 0.5F));
  EXPECT_TRUE(progress.Step(0, 0)) << "no number counts as 0";
  EXPECT_THAT(shown(), ElementsAre(0.0F));
  progress.Step(1241514, 16777217);
  expectRange(progress, 0, 1000, 74);  // with the total in doubles it would be 73
  progress.Step(17010927, 33618432);
  expectRange(progress, 0, 1000, 506);  // with what is done in doubles it would be 505
}

TEST_F(Progress, BetweenPositionsAsksWhetherItIsCancelled) {
  ProgressCallbackObject progress;
  progress.Report(0.5F);
  shown();
  EXPECT_TRUE(progress.Report(0.5F));
  EXPECT_THAT(shown(), ElementsAre(FakeProgress::asked));
  service_->isCancelled = true;
  EXPECT_FALSE(progress.Report(0.5F));
  EXPECT_TRUE(progress.IsCancelled());
  EXPECT_THAT(shown(), ElementsAre(FakeProgress::asked));
  EXPECT_FALSE(progress.Report(0.5F));
  EXPECT_THAT(shown(), IsEmpty()) << "it knows already";
}

TEST_F(Progress, ThatMayNotBeCancelledDoesNotAsk) {
  ProgressCallbackObject progress;
  progress.SetCancellable(false);
  service_->isCancelled = true;
  EXPECT_TRUE(progress.Report(0));
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(Progress, ShowsANewPositionEvenWhenCancelled) {
  ProgressCallbackObject progress;
  progress.SetCancelled(true);
  EXPECT_TRUE(progress.Report(0.5F));
  EXPECT_THAT(shown(), ElementsAre(0.5F));
  EXPECT_TRUE(progress.IsCancelled());
}

TEST_F(Progress, StopsWhenTheServiceSaysSo) {
  ProgressCallbackObject progress;
  service_->goesOn = false;
  EXPECT_FALSE(progress.Report(0.5F));
  EXPECT_TRUE(progress.IsCancelled());
  EXPECT_EQ(progress.GetFlags(), 3);
}

TEST_F(Progress, ThatMayNotBeCancelledStopsWithoutBeingCancelled) {
  ProgressCallbackObject progress;
  progress.SetCancellable(false);
  service_->goesOn = false;
  EXPECT_FALSE(progress.Report(0.5F));
  EXPECT_FALSE(progress.IsCancelled());
}

TEST_F(Progress, IsSilentWhenOffWithoutServiceOrHidden) {
  ProgressCallbackObject off;
  off.Enable(false);
  ProgressCallbackObject alone;
  alone.SetProgress(nullptr);
  ProgressCallbackObject hidden;
  hidden.SetShown(false);
  service_->goesOn = false;
  for (ProgressCallbackObject* progress : {&off, &alone, &hidden}) {
    progress->SetCancelled(true);
    EXPECT_TRUE(progress->Begin());
    EXPECT_TRUE(progress->Report(0.5F));
    EXPECT_TRUE(progress->Step(1, 2));
    EXPECT_TRUE(progress->End());
    EXPECT_TRUE(progress->IsCancelled()) << "nothing is forgotten either";
  }
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(Progress, BeginsAndEndsAfresh) {
  ProgressCallbackObject progress;
  progress.SetRange(100, 200, 150);
  progress.SetCancelled(true);
  EXPECT_TRUE(progress.Begin());
  EXPECT_FALSE(progress.IsCancelled());
  expectRange(progress, 100, 200, 0);
  progress.SetRange(100, 200, 150);
  progress.SetCancelled(true);
  EXPECT_TRUE(progress.End());
  EXPECT_FALSE(progress.IsCancelled());
  expectRange(progress, 100, 200, 0);
  EXPECT_THAT(shown(), ElementsAre(0.0F, 1.0F)) << "of the whole bar";
  service_->goesOn = false;
  EXPECT_FALSE(progress.Begin());
  EXPECT_FALSE(progress.End());
  EXPECT_FALSE(progress.IsCancelled());
}

TEST_F(Progress, TakesRangesInPerCent) {
  ProgressCallbackObject progress;
  progress.SetPercentRange(10, 20);
  progress.SetPercentRange(-1, 50);
  expectRange(progress, 100, 500, 0);
  progress.SetPercentRange(30, -1);
  expectRange(progress, 300, 500, 0);
  progress.SetPercentRange(500, INT32_MAX);
  expectRange(progress, 1000, 1000, 0);
  progress.SetPercentRange(80, 40);
  expectRange(progress, 400, 400, 0);  // the start is cut to the end
  int32_t from = 0;
  int32_t to = 0;
  progress.SetRange(259, 999, 0);
  progress.GetPercentRange(from, to);
  EXPECT_EQ(from, 25);
  EXPECT_EQ(to, 99);
}

TEST_F(Progress, HasNoRangeWhileOff) {
  ProgressCallbackObject progress;
  progress.SetRange(-1, 600, 5);
  progress.SetPercentRange(10, 20);
  expectRange(progress, -1, 600, 5);
  int32_t from = 7;
  int32_t to = 7;
  progress.GetPercentRange(from, to);
  EXPECT_EQ(from, 0);
  EXPECT_EQ(to, 0);
}

TEST_F(Progress, EnabledCoversTheWholeBarAndFindsTheService) {
  ProgressCallbackObject progress;
  progress.SetProgress(nullptr);
  progress.SetRange(200, 300, 250);
  progress.Enable(true);
  expectRange(progress, 0, 1000, 250);
  EXPECT_EQ(progress.GetProgress(), service_.get());
  progress.SetProgress(nullptr);
  progress.SetRange(200, 300, 250);
  progress.Enable(false);
  expectRange(progress, -1, 300, 250);
  EXPECT_EQ(progress.GetProgress(), nullptr);
}

TEST_F(Progress, CopiesStartSwitchedOff) {
  ProgressCallbackObject progress;
  progress.SetRange(100, 200, 150);
  progress.SetCancellable(false);
  ProgressCallbackObject copy(progress);
  expectRange(copy, -1, 1000, 0);
  EXPECT_EQ(copy.GetFlags(), 0);
  EXPECT_EQ(copy.GetProgress(), service_.get());
}

TEST_F(Progress, IsHandedOnAsItIs) {
  ProgressCallbackObject from;
  from.SetRange(100, 200, 150);
  from.SetShown(false);
  ProgressCallbackObject to;
  to.SetProgress(nullptr);
  from.CopyTo(&to);
  expectRange(to, 100, 200, 0);
  EXPECT_EQ(to.GetFlags(), 10);
  EXPECT_EQ(to.GetProgress(), service_.get());
  from.CopyTo(&from);
  expectRange(from, 100, 200, 150);
  from.CopyTo(nullptr);
  ProgressCallbackObject third;
  third.CopyFrom(&from);
  expectRange(third, 100, 200, 0);
  third.CopyFrom(nullptr);
  expectRange(third, 100, 200, 0);
  from.SetRange(-1, 300, 5);
  from.SetCancelled(true);
  from.CopyTo(&third);
  expectRange(third, -1, 300, 0);  // switched off as it is
  EXPECT_EQ(third.GetFlags(), 11);
}

TEST_F(Progress, ComparesItsPositionWithoutASign) {
  ProgressCallbackObject progress;
  progress.SetRange(1, -1, UINT32_MAX);
  EXPECT_TRUE(progress.Report(1));
  EXPECT_THAT(shown(), ElementsAre(FakeProgress::asked)) << "-1 is shown already";
}

TEST_F(Progress, TellsWhetherAFlagChanged) {
  ProgressCallbackObject progress;
  EXPECT_EQ(progress.SetCancellable(true), 0);
  EXPECT_EQ(progress.SetCancellable(false), 1);
  EXPECT_EQ(progress.SetCancellable(false), 0);
  EXPECT_EQ(progress.GetFlags(), 0);
  EXPECT_EQ(progress.SetShown(true), 0);
  EXPECT_EQ(progress.SetShown(false), 1);
  EXPECT_EQ(progress.GetFlags(), 8);
  EXPECT_EQ(progress.SetShown(true), 1);
  EXPECT_TRUE(progress.SetCancelled(true));
  EXPECT_TRUE(progress.SetCancelled(true));
  EXPECT_EQ(progress.GetFlags(), 1);
  EXPECT_TRUE(progress.SetCancelled(false));
  EXPECT_EQ(progress.GetFlags(), 0);
}

TEST_F(Progress, TellsWhatTheServiceSays) {
  ProgressCallbackObject progress;
  EXPECT_FALSE(progress.IsServiceCancelled());
  service_->isCancelled = true;
  EXPECT_TRUE(progress.IsServiceCancelled());
  EXPECT_FALSE(progress.IsCancelled()) << "its own flag is another";
  EXPECT_TRUE(progress.SetProgress(nullptr));
  EXPECT_FALSE(progress.IsServiceCancelled());
}

TEST_F(Progress, TouchesTheDisplayAThousandTimesAtMost) {
  ProgressCallbackObject progress;
  progress.SetCancellable(false);
  for (int32_t i = 0; i <= 1000000; ++i) progress.Step(i, 1000000);
  EXPECT_EQ(shown().size(), 1000U);
}

TEST(ProgressWithoutService, LetsEverythingGoOn) {
  ProgressCallbackObject progress;
  EXPECT_EQ(progress.GetProgress(), nullptr);
  EXPECT_TRUE(progress.Begin());
  EXPECT_TRUE(progress.Report(0.5F));
}

TEST_F(Progress, ComesAsASharedObject) {
  const IPtr<IOroProgressObject> progress = new IOroProgressObject;
  EXPECT_STREQ(progress->getClassName(), "IOroProgressObject");
  EXPECT_EQ(oroQueryClass<IOroProgressObject>(progress.get()), progress.get());
  EXPECT_NE(oroQuery<IOroUnknown>(progress.get()), nullptr);
  EXPECT_EQ(oroQuery<IOroProgress>(progress.get()), nullptr);
  EXPECT_TRUE(progress->Report(0.25F));
  EXPECT_THAT(shown(), ElementsAre(0.25F));
}

TEST_F(Progress, ComesAsAPlainObject) {
  const OroObject* const object = new ProgressCallbackObject;
  delete object;
  EXPECT_EQ(service_->refCount(), 2);
}

}  // namespace
