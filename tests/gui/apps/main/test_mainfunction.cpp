#include "gui/apps/main/mainfunction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gui/apps/main/appglobals.h"
#include "gui/apps/main/commandlinesettings.h"
#include "headless/testaccess.h"
#include "interfaces/IOroLoadJournal.h"
#include "orobasictypes/sptr.h"
#include "platform/console.h"
#include "platform/hooks.h"
#include "tests/gui/apps/main/appworld.h"
#include "tests/gui/apps/main/flowdoubles.h"
#include "tests/gui/apps/main/initserverdouble.h"
#include "tests/gui/apps/main/starterdouble.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using tests::events;

class MainFunction : public testing::Test {
 protected:
  int32_t run(std::vector<const char*> arguments) {
    return oroMainFunction(static_cast<int>(arguments.size()), arguments.data(), &hook_);
  }
  void known(std::function<void()> services) {
    tests::initServerPlan().onRead = std::move(services);
  }

  tests::AppWorld world_;
  tests::StaticInitServer hook_;
};

bool noConsole(std::string_view) { return false; }

TEST_F(MainFunction, HelpEndsBeforeAnythingOfTheFrameworkExists) {
  const platform::HookGuard guard(platform::writeUsageToConsoleHook, noConsole);
  testing::internal::CaptureStdout();
  EXPECT_EQ(run({"cowl", "-help"}), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout().substr(0, 6), "Usage:");
  EXPECT_EQ(oroAppGlobals().broker, nullptr);
  EXPECT_TRUE(events().empty());
}

TEST_F(MainFunction, RunsTheCommandLineWithoutAStarter) {
  EXPECT_EQ(run({"cowl"}), 0);
  EXPECT_NE(headlesstest::attachedService(), nullptr);
  EXPECT_EQ(events().back(), "component shutDown");
}

TEST_F(MainFunction, EndsWithAStatusOnlyWhereTheOutcomeHasOne) {
  auto* const outcome = new tests::RunOutcome();
  known([&] {
    tests::publish("IOroRunOutcome", outcome);
    tests::publish("IExitService", new tests::ExitService());
  });
  EXPECT_EQ(run({"cowl"}), 0);
  oroEndWithStatus();
  EXPECT_THAT(events(), Not(Contains(testing::HasSubstr("exit"))));
  outcome->status = 4;
  oroEndWithStatus();
  EXPECT_EQ(events().back(), "exit 4");
}

TEST_F(MainFunction, AStatusThatNobodyCanEndWithChangesNothing) {
  known([] {
    auto* const outcome = new tests::RunOutcome();
    outcome->status = 4;
    tests::publish("IOroRunOutcome", outcome);
  });
  EXPECT_EQ(run({"cowl"}), 0);
  oroEndWithStatus();
  EXPECT_THAT(events(), Not(Contains(testing::HasSubstr("exit"))));
}

TEST_F(MainFunction, PublishesTheJournalOfLoads) {
  run({"cowl"});
  SPtr<IOroLoadJournal> journal;
  EXPECT_TRUE(journal);
}

TEST_F(MainFunction, HandsOverToAStarter) {
  known([] { tests::publish("IOroAppStarter", new tests::Starter()); });
  EXPECT_EQ(run({"cowl", "x"}), 0);
  EXPECT_EQ(headlesstest::attachedService(), nullptr);
  EXPECT_THAT(events(), Contains("starter run"));
  EXPECT_THAT(events(), Contains("starter shutDown"));
}

TEST_F(MainFunction, AStarterThatFailsIsShutDownAllTheSame) {
  known([] {
    auto* const starter = new tests::Starter();
    starter->runResult = 5;
    tests::publish("IOroAppStarter", starter);
  });
  EXPECT_EQ(run({"cowl"}), 1);
  EXPECT_EQ(events().back(), "component shutDown");
}

TEST_F(MainFunction, AFailedStartRunsNothingAndShutsNothingDown) {
  known([] {
    auto* const starter = new tests::Starter();
    starter->startResult = 3;
    tests::publish("IOroAppStarter", starter);
  });
  EXPECT_EQ(run({"cowl"}), 1);
  EXPECT_THAT(events(), Not(Contains("starter run")));
  EXPECT_THAT(events(), Not(Contains("starter shutDown")));
  EXPECT_THAT(events(), Not(Contains("component shutDown")));
}

TEST_F(MainFunction, AFailedDescriptionIsTheResultOne) {
  tests::initServerPlan().describes = false;
  EXPECT_EQ(run({"cowl"}), 1);
  EXPECT_EQ(headlesstest::attachedService(), nullptr);
}

TEST_F(MainFunction, AScriptErrorIsTheResultOne) {
  known([] {
    auto* const engine = new tests::ScriptEngine();
    engine->onRun = [] { tests::setText(commandlinesettings::kScriptError, "broken"); };
    tests::publish("IScriptEngine", engine);
    tests::setText(commandlinesettings::kScript, "do.py");
  });
  EXPECT_EQ(run({"cowl"}), 1);
}

TEST_F(MainFunction, AScriptErrorWithoutAScriptShowsAtTheEnd) {
  known([] { tests::setText(commandlinesettings::kScriptError, "stale"); });
  EXPECT_EQ(run({"cowl"}), 1);
}

struct WideArgument : tests::Double<WideArgument, ICmdLine> {
  static constexpr const char* className() { return "WideArgument"; }
  std::u16string last;
  OroString error;
  bool parse(int32_t argc, const OroString* argv) override {
    last = argv[argc - 1].wideText();
    return true;
  }
  const OroString& errorText() override { return error; }
};

TEST_F(MainFunction, WidensArgumentsWithTheirSign) {
  const IPtr<WideArgument> options(new WideArgument());
  known([&] { tests::publish("ICmdLine", options.get()); });
  EXPECT_EQ(run({"cowl", "caf\xE9"}), 0);
  EXPECT_EQ(options->last, u"caf\xFFE9");
}

TEST_F(MainFunction, TakesNoArgumentsAtAll) { EXPECT_EQ(run({}), 0); }

}  // namespace
