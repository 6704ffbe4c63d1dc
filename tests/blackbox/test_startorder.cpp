// The order of start and stop of the real executable, as a component library sees it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "tests/blackbox/bareprogram.h"
#include "tests/blackbox/childprocess.h"
#include "tests/testpaths.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

using Calls = std::vector<std::string>;

constexpr const char* kComponentUp =
    "component, argument '-first', build '" COWL_EXPECTED_VERSION "'";

class StartOrder : public testing::Test {
 protected:
  StartOrder() {
    for (const auto& file :
         std::filesystem::directory_iterator(tests::testLibsDir() / "recordingstarter")) {
      std::filesystem::copy_file(file.path(), bare_.folder() / file.path().filename());
    }
    std::filesystem::create_directory(bare_.folder() / "Help");
    std::ofstream(bare_.folder() / "Help" / "manual.chm") << "help";
  }

  Calls callsOfRun(const char* plan) {
    std::filesystem::remove(bare_.folder() / "calls");
    result_ = bare_.run({"-first", "second"}, {{"COWL_TEST_PLAN", plan}});
    EXPECT_TRUE(result_.started);
    EXPECT_FALSE(result_.timedOut);
    EXPECT_EQ(result_.exitCode, 1);
    EXPECT_EQ(result_.errors, "");
    std::istringstream text(bare_.file("calls"));
    Calls calls;
    for (std::string line; std::getline(text, line);) calls.push_back(line);
    return calls;
  }

  tests::BareProgram bare_;
  tests::ChildResult result_;
};

// What each run begins with.
const Calls kLoaded = {kComponentUp, "services", "init server", "setClassRegistration",
                       "readDescription 0"};

Calls after(Calls calls, const Calls& more) {
  calls.insert(calls.end(), more.begin(), more.end());
  return calls;
}

TEST_F(StartOrder, AnApplicationIsStartedRunAndEndedStepByStep) {
  EXPECT_THAT(callsOfRun("well"),
              ElementsAreArray(after(
                  kLoaded, {"starter init 3 '-first' 'second'", "language en",
                            "component language en", "language en", "finish", "init server gone",
                            "starter initDone", "Network/Internal 0", "help volume manual.chm",
                            "help viewer", "starter start", "starter run", "starter shutDown",
                            "component shutDown", "memory manager end"})));
}

TEST_F(StartOrder, WithoutAnApplicationTheCommandLineRuns) {
  EXPECT_THAT(
      callsOfRun("no starter"),
      ElementsAreArray(after(kLoaded, {"language en", "component language en", "language en",
                                       "finish", "init server gone", "Network/Internal 0",
                                       "component shutDown", "memory manager end"})));
}

TEST_F(StartOrder, AFailedDescriptionIsTheEnd) {
  EXPECT_THAT(callsOfRun("no description"), ElementsAreArray(after(kLoaded, {"init server gone"})));
}

TEST_F(StartOrder, AnApplicationThatDoesNotStartIsNeitherRunNorEnded) {
  EXPECT_THAT(
      callsOfRun("no start"),
      ElementsAreArray(after(kLoaded, {"starter init 3 '-first' 'second'", "language en",
                                       "component language en", "language en", "finish",
                                       "init server gone", "starter initDone", "Network/Internal 0",
                                       "help volume manual.chm", "help viewer", "starter start"})));
}

TEST_F(StartOrder, AfterAFailedRunTheEndComesAllTheSame) {
  const Calls calls = callsOfRun("failed run");
  ASSERT_GE(calls.size(), 4u);
  EXPECT_THAT(
      Calls(calls.end() - 4, calls.end()),
      ElementsAre("starter run", "starter shutDown", "component shutDown", "memory manager end"));
}

TEST(Network, AHostThatNobodyKnowsDoesNotHoldUpTheStart) {
  tests::BareProgram bare;  // ends before it asks for the host
  const auto measured = [](auto run) {
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::steady_clock::now() - start;
  };
  const auto without = measured([&] { bare.run({}); });
  const auto with = measured([] { tests::runChild({tests::cowlProgram(), {}}); });
  EXPECT_LT(with, without + std::chrono::seconds(5)) << "a second, on a busy machine";
}

TEST(Network, TheHostStandsNowhereInTheExecutable) {
  std::ifstream file(tests::cowlProgram(), std::ios::binary);
  const std::string image{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(image.find("Network/Internal"), std::string::npos);
  EXPECT_EQ(image.find(COWL_EXPECTED_HOST), std::string::npos);
}

}  // namespace
