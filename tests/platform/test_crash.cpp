#include "platform/crash.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "platform/process.h"

namespace {

// An address that no system gives out; read through volatile so that the access takes place.
void accessInvalidMemory() {
  volatile int* volatile nowhere = reinterpret_cast<volatile int*>(0x10);
  *nowhere = 1;
}

void reportAndEnd(int signalNumber) {
  std::fprintf(stderr, "reported %d", signalNumber);
  std::fflush(stderr);
  platform::endProcessNow(7);
}

void faultWhileReporting(int) {
  platform::installSecondFaultHandler();
  std::fprintf(stderr, "reporting");
  std::fflush(stderr);
  accessInvalidMemory();
  platform::endProcessNow(7);
}

TEST(CrashDeathTest, HandlerGetsTheSignal) {
  EXPECT_EXIT(
      {
        platform::installCrashHandler(reportAndEnd);
        accessInvalidMemory();
      },
      testing::ExitedWithCode(7), "reported 11");
}

TEST(CrashDeathTest, FaultInTheReportEndsTheProcessAtOnceWithZero) {
  EXPECT_EXIT(
      {
        platform::installCrashHandler(faultWhileReporting);
        accessInvalidMemory();
      },
      testing::ExitedWithCode(0), "reporting");
}

}  // namespace
