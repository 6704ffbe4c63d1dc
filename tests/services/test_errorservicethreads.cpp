// Reports from several threads at once. An executable of its own, which the thread sanitizer runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "services/errorservice.h"
#include "tests/services/recordinglistener.h"
#include "tests/services/servicetest.h"

namespace {

using ::testing::ElementsAre;
using tests::HeardError;
using tests::RecordingListener;

class ErrorServiceThreadsTest : public tests::ServiceTest {
 protected:
  ErrorServiceThreadsTest() : listener_(new RecordingListener(heard_, "a")) {
    service_->addListener(listener_);
  }
  void report(const char* text, int32_t severity) {
    service_->report(OroString(text), severity, KelCString("detail"));
  }
  std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const HeardError& error : heard_) texts.push_back(error.text);
    return texts;
  }

  std::vector<HeardError> heard_;
  RecordingListener* const listener_;  // held by the service
  IPtr<ErrorService> service_ = new ErrorService(false);
};

TEST_F(ErrorServiceThreadsTest, ReportsOfAllThreadsAreHeardOneAtATime) {
  service_->pushContext(OroString("working"));
  constexpr int kThreads = 4;
  constexpr int kReports = 500;
  std::atomic<int> inside = 0;
  std::atomic<bool> overlapped = false;
  listener_->during = [&] {
    if (++inside != 1) overlapped = true;
    --inside;
  };
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < kReports; ++i) report("from a thread", 2);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_FALSE(overlapped);
  EXPECT_EQ(heard_.size(), static_cast<size_t>(kThreads * kReports));
}

TEST_F(ErrorServiceThreadsTest, AReporterWaitsUntilTheListenersOfAnotherHaveReturned) {
  std::atomic<bool> insideFirst = false;
  std::atomic<bool> release = false;
  listener_->during = [&] {
    if (insideFirst.exchange(true)) return;
    while (!release) std::this_thread::yield();
    heard_.push_back({"a", "(first done)", 0, "", nullptr});
  };
  std::thread first([&] { report("first", 1); });
  while (!insideFirst) std::this_thread::yield();
  std::thread second([&] { report("second", 1); });
  release = true;
  first.join();
  second.join();
  EXPECT_THAT(texts(), ElementsAre("first", "(first done)", "second"));
}

// One thread switches the service off and on while others report: what is heard is whole.
TEST_F(ErrorServiceThreadsTest, SwitchingOffBetweenReportsLosesThemWhole) {
  std::atomic<bool> done = false;
  std::thread switcher([&] {
    while (!done) service_->setActive(!service_->isActive());
    service_->setActive(true);
  });
  for (int i = 0; i < 2000; ++i) report("whole", 1);
  done = true;
  switcher.join();
  report("whole", 1);
  EXPECT_GE(heard_.size(), 1u);
  for (const HeardError& error : heard_) EXPECT_EQ(error.text, "whole");
}

}  // namespace
