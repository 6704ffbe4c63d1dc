#include "components/commandline/runoutcome.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/basic/kelcustomdatastore.h"
#include "components/commandline/verboselines.h"
#include "interfaces/IGuiBusyState.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroLoadJournal.h"
#include "tests/gui/apps/main/double.h"
#include "tests/support/fakebroker.h"

namespace {

struct BusyTexts : tests::Double<BusyTexts, IGuiBusyState> {
  static constexpr const char* className() { return "Busy"; }
  std::vector<std::string> texts;
  void startBusy(const OroString&, int32_t, const void*) override {}
  void startBusy2(const OroString&, int32_t, const void*) override {}
  void startBusy3(const OroString&, int32_t, const void*) override {}
  void startBusy4(const OroString&, int32_t, const void*) override {}
  void stopBusy(int32_t, int32_t, const void*) override {}
  void stopBusy2(int32_t, int32_t, const void*) override {}
  void setBusyText(const OroString& text) override { texts.emplace_back(text.toUtf8()); }
  void currentAction(OroString&) override {}
  void setPercent(int32_t) override {}
};

struct ToldErrors : tests::Double<ToldErrors, IOroErrorService> {
  static constexpr const char* className() { return "Errors"; }
  std::vector<std::string> texts;
  void addListener(IOroErrorListener*) override {}
  void removeListener(IOroErrorListener*) override {}
  void report(const OroString& text, int32_t severity, const KelCString&) override {
    texts.push_back(std::to_string(severity) + " " + text.toUtf8());
  }
  void setFlag(const KelCString&, bool) override {}
  bool getFlag(const KelCString&) override { return false; }
  void removeWinBoxDisplay() override {}
  void pushContext(const OroString&) override {}
  void popContext() override {}
  void getContext(OroStringArray&) override {}
  void clearContext() override {}
  bool setActive(bool) override { return true; }
  bool isActive() override { return true; }
};

// Each test uses a journal that is longer than those before it: what was told stays told.
struct Journal : tests::Double<Journal, IOroLoadJournal> {
  static constexpr const char* className() { return "Journal"; }
  std::vector<int32_t> steps;
  int32_t count() override { return static_cast<int32_t>(steps.size()); }
  bool load(int32_t index, OroString& path, int32_t& step, int64_t& nanoseconds) override {
    if (index < 1 || index > count()) return false;
    path = OroString(u"\\lib");
    path.append(OroString(index));
    step = steps[static_cast<size_t>(index) - 1];
    nanoseconds = 1500000;
    return true;
  }
};

class RunOutcomeTest : public testing::Test {
 protected:
  template <class T>
  T* add(const char* name, T* object) {
    broker_.registerService(KelCString::borrow(name), object);
    return object;
  }
  void ask(const char* setting) {
    store_->CreateDirectory("GUI");
    store_->CreateInt(setting, 0, 0, 1, 0);
    store_->SetInt(nullptr, setting, 1);
  }
  void step(OroRunStep step, OroRunResult result, const char16_t* subject = u"a.xyz") {
    outcome_->stepBegun(step, OroString(subject));
    outcome_->stepEnded(step, result);
  }
  std::string record() {
    outcome_->runEnded();
    return busy_->texts.empty() ? "<none>" : busy_->texts.back();
  }

  tests::FakeBroker broker_;
  IDataStore* store_ = add("IDataStore", new KelCustomDataStore);
  BusyTexts* busy_ = add("IGuiBusyState", new BusyTexts);
  ToldErrors* errors_ = add("IOroErrorService", new ToldErrors);
  IPtr<RunOutcome> outcome_{new RunOutcome};
};

TEST_F(RunOutcomeTest, ARunWithoutStepsIsASuccess) {
  ask(RunOutcome::kExitStatus);
  EXPECT_EQ(record(), "Outcome: success");
  EXPECT_EQ(outcome_->exitStatus(), 0);
}

TEST_F(RunOutcomeTest, GivesNoStatusUnlessItIsAskedFor) {
  step(kOroRunOpen, kOroRunFailed);
  EXPECT_EQ(outcome_->exitStatus(), -1);
  EXPECT_EQ(record(), "Outcome: open failed");
}

TEST_F(RunOutcomeTest, TellsTheStepsApart) {
  ask(RunOutcome::kExitStatus);
  const struct {
    OroRunStep step;
    int32_t status;
    const char* record;
  } rows[] = {
      {kOroRunScript, 2, "Outcome: script failed"},
      {kOroRunOpen, 3, "Outcome: open failed"},
      {kOroRunSave, 4, "Outcome: save failed"},
      {kOroRunBatch, 6, "Outcome: batch failed"},
  };
  for (const auto& row : rows) {
    outcome_ = new RunOutcome;
    step(kOroRunOpen, kOroRunDone);
    step(row.step, kOroRunFailed);
    EXPECT_EQ(outcome_->exitStatus(), row.status);
    EXPECT_EQ(record(), row.record);
  }
}

TEST_F(RunOutcomeTest, TheFirstFailureDecides) {
  ask(RunOutcome::kExitStatus);
  step(kOroRunSave, kOroRunFailed);
  step(kOroRunOpen, kOroRunFailed);
  step(kOroRunOpen, kOroRunDone);
  EXPECT_EQ(outcome_->exitStatus(), 4);
  EXPECT_EQ(record(), "Outcome: save failed");
}

TEST_F(RunOutcomeTest, AFileOfABatchThatFailedDecidesOverTheBatchAsAWhole) {
  ask(RunOutcome::kExitStatus);
  outcome_->stepBegun(kOroRunBatch, OroString(u"in"));
  step(kOroRunOpen, kOroRunFailed);
  outcome_->stepEnded(kOroRunBatch, kOroRunDone);
  EXPECT_EQ(outcome_->exitStatus(), 3);
}

TEST_F(RunOutcomeTest, ReportsWhatNobodyCouldDo) {
  step(kOroRunOpen, kOroRunNobody);
  step(kOroRunSave, kOroRunNobody, u"b.xyz");
  step(kOroRunBatch, kOroRunNobody, u"");
  EXPECT_EQ(errors_->texts,
            (std::vector<std::string>{"1 There is nothing to open the file a.xyz with",
                                      "1 There is nothing to save the file b.xyz with",
                                      "1 There is nothing to run a batch with"}));
}

// Whoever looked for the engine has said that there is none.
TEST_F(RunOutcomeTest, AFailureAndAMissingEngineAreReportedElsewhere) {
  step(kOroRunOpen, kOroRunFailed);
  step(kOroRunScript, kOroRunNobody, u"do.py");
  EXPECT_TRUE(errors_->texts.empty());
  EXPECT_EQ(record(), "Outcome: open failed");
}

TEST_F(RunOutcomeTest, StepsOfNoKnownKindAreLeftAlone) {
  for (int32_t step : {-1, 0, 5, 2147483647}) {
    outcome_->stepBegun(step, OroString());
    outcome_->stepEnded(step, kOroRunFailed);
  }
  EXPECT_EQ(record(), "Outcome: success");
}

TEST_F(RunOutcomeTest, PrintsNothingUnlessItIsAskedFor) {
  testing::internal::CaptureStderr();
  step(kOroRunOpen, kOroRunDone);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(RunOutcomeTest, PrintsEachStepWithItsFileAndTime) {
  ask(RunOutcome::kVerbose);
  testing::internal::CaptureStderr();
  step(kOroRunOpen, kOroRunDone);
  step(kOroRunSave, kOroRunFailed);
  const std::string text = testing::internal::GetCapturedStderr();
  EXPECT_EQ(text.rfind("cowl: open: a.xyz in ", 0), 0u) << text;
  EXPECT_NE(text.find(" ms\ncowl: save failed: a.xyz in "), std::string::npos) << text;
}

TEST_F(RunOutcomeTest, PrintsEachLibraryOnce) {
  ask(RunOutcome::kVerbose);
  Journal* journal = add("IOroLoadJournal", new Journal);
  journal->steps = {kOroLoadDone, kOroLoadFile, kOroLoadEntryPoint, kOroLoadVersion};
  testing::internal::CaptureStderr();
  step(kOroRunOpen, kOroRunDone);
  journal->steps.push_back(kOroLoadComponent);
  printNewLoads();
  printNewLoads();
  const std::string text = testing::internal::GetCapturedStderr();
  const auto count = [&](const std::string& part) {
    int found = 0;
    for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++found;
    return found;
  };
  EXPECT_EQ(count("cowl: loaded: "), 1) << text;
  EXPECT_EQ(count("cowl: not loaded (file): "), 1) << text;
  EXPECT_EQ(count("cowl: not loaded (entry point): "), 1) << text;
  EXPECT_EQ(count("cowl: not loaded (version): "), 1) << text;
  EXPECT_EQ(count("cowl: not loaded (component): "), 1) << text;
  EXPECT_EQ(count("lib3 in 1.5 ms\n"), 1) << text;
  EXPECT_LT(text.find("lib4"), text.find("cowl: open: ")) << "a library comes before its use";
}

TEST(RunOutcomeAlone, NeedsNoService) {
  tests::FakeBroker broker;
  IPtr<RunOutcome> outcome(new RunOutcome);
  outcome->stepBegun(kOroRunOpen, OroString(u"a"));
  outcome->stepEnded(kOroRunOpen, kOroRunNobody);
  outcome->runEnded();
  EXPECT_EQ(outcome->exitStatus(), -1);
}

}  // namespace
