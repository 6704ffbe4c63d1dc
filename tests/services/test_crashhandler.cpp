#include "services/crashhandler.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "interfaces/IDotNetErrorService.h"
#include "interfaces/IMainApplication.h"
#include "orobasictypes/orotranslate.h"
#include "platform/process.h"
#include "services/errorservice.h"
#include "services/logfilelistener.h"
#include "tests/services/brackettranslator.h"
#include "tests/services/recordinglistener.h"
#include "tests/services/servicetest.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::HeardError;
using tests::RecordingListener;

struct Ended {
  int status;
};

void throwEnd(int status) { throw Ended{status}; }

class MainApplication : public IMainApplication {
 public:
  static constexpr const char* className() { return "MainApplication"; }
  using Offers = OroOffers<MainApplication, IMainApplication>;
  explicit MainApplication(bool silent) : silent_(silent) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  bool endsSilently() override { return silent_; }

 private:
  bool silent_;
};

class DotNetErrors : public IDotNetErrorService {
 public:
  static constexpr const char* className() { return "DotNetErrors"; }
  using Offers = OroOffers<DotNetErrors, IDotNetErrorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void showError(const OroString& title, const OroString& text) override {
    shown.push_back(tests::narrow(title) + "|" + tests::narrow(text));
  }
  std::vector<std::string> shown;
};

class CrashHandlerTest : public tests::ServiceTest {
 protected:
  CrashHandlerTest() {
    listener_ = new RecordingListener(heard_, "a");
    service_->addListener(listener_.get());
  }

  // Runs the handler as the signal would, and gives the status with which it ended the process.
  int crash(int signalNumber) {
    const platform::HookGuard guard(platform::endProcessNowHook, throwEnd);
    try {
      oroStandardCrashHandler(signalNumber);
    } catch (const Ended& end) {
      return end.status;
    }
    return -1;
  }

  std::vector<HeardError> heard_;
  IPtr<RecordingListener> listener_;
  IPtr<ErrorService> service_ = new ErrorService(false);
};

TEST_F(CrashHandlerTest, TheCrashIsReportedAsAnErrorAndTheProcessEndsWithZero) {
  EXPECT_EQ(crash(11), 0);
  ASSERT_EQ(heard_.size(), 1u);
  EXPECT_EQ(heard_[0].text, "Unknown Error 11 occurred.\nApplication will close.");
  EXPECT_EQ(heard_[0].severity, 1);
  EXPECT_EQ(heard_[0].detail, "");
}

TEST_F(CrashHandlerTest, TheMessageIsATranslation) {
  oroSetModuleTranslator(new tests::BracketTranslator);
  crash(11);
  ASSERT_EQ(heard_.size(), 1u);
  EXPECT_EQ(heard_[0].text, "[Unknown Error 11 occurred.\nApplication will close.]");
}

TEST_F(CrashHandlerTest, TheApplicationMaySuppressTheMessage) {
  publish("IMainApplication", new MainApplication(true));
  EXPECT_EQ(crash(11), 0);
  EXPECT_TRUE(heard_.empty());
}

TEST_F(CrashHandlerTest, AnApplicationThatDoesNotMindHearsTheMessage) {
  publish("IMainApplication", new MainApplication(false));
  EXPECT_EQ(crash(4), 0);
  ASSERT_EQ(heard_.size(), 1u);
  EXPECT_EQ(heard_[0].text, "Unknown Error 4 occurred.\nApplication will close.");
}

TEST_F(CrashHandlerTest, TheOtherToolkitIsToldOnlyWhenTheRegistrySaysSo) {
  const IPtr<DotNetErrors> other = new DotNetErrors;
  publish("IDotNetErrorService", other.get());
  crash(11);
  setValue("App/WPF Application", "True");
  crash(11);
  EXPECT_TRUE(other->shown.empty());
  setValue("App/WPF Application", "true");
  crash(11);
  ASSERT_EQ(other->shown.size(), 1u);
  EXPECT_EQ(other->shown[0], "|Unknown Error 11 occurred.\nApplication will close.");
}

TEST_F(CrashHandlerTest, TheOtherToolkitMayBeAbsent) {
  setValue("App/WPF Application", "true");
  EXPECT_EQ(crash(11), 0);
  EXPECT_EQ(heard_.size(), 1u);
}

TEST_F(CrashHandlerTest, WithoutAnErrorServiceItReturns) {
  service_ = nullptr;
  EXPECT_EQ(crash(11), -1);
  EXPECT_TRUE(heard_.empty());
}

// The tests below crash for good, in a process of their own. The address is in the first page,
// which no system maps; a null pointer would be caught by a sanitizer before the access.
void touchNothing() {
  volatile std::uintptr_t address = 64;
  *reinterpret_cast<volatile int*>(address) = 1;
}

class CrashDeathTest : public CrashHandlerTest {
 protected:
  CrashDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(CrashDeathTest, AnInvalidAccessIsReportedAndEndsWithZero) {
  auto* const log = new LogfileListener;
  service_->addListener(log);
  log->setLogFile(base("crash.log"));
  EXPECT_EXIT(
      {
        listener_->during = [&] { std::fputs(heard_.back().text.c_str(), stderr); };
        touchNothing();
      },
      ::testing::ExitedWithCode(0), "Unknown Error 11 occurred\\.");
}

TEST_F(CrashDeathTest, AFaultDuringTheReportEndsTheProcessAtOnce) {
  EXPECT_EXIT(
      {
        listener_->during = [&] {
          std::fputs("reporting", stderr);
          touchNothing();
        };
        touchNothing();
      },
      ::testing::ExitedWithCode(0), "reporting");
}

TEST_F(CrashDeathTest, WithoutAnErrorServiceTheSystemEndsTheProcess) {
  EXPECT_EXIT(
      {
        service_ = nullptr;
        touchNothing();
      },
      [](int status) { return !::testing::ExitedWithCode(0)(status); }, "");
}

void endWith42(int) {
  std::fputs("my own handler", stderr);
  platform::endProcessNow(42);
}

TEST_F(CrashDeathTest, AHandlerOfTheCallersOwnTakesThePlaceOfTheStandardOne) {
  EXPECT_EXIT(
      {
        const IPtr<ErrorService> service = new ErrorService(false, endWith42);
        touchNothing();
      },
      ::testing::ExitedWithCode(42), "my own handler");
}

TEST(IMainApplicationTest, TheQueryIsTheFifthOperation) {
  EXPECT_EQ(tests::slotNumber(&IMainApplication::endsSilently), 5);
  EXPECT_EQ(tests::slotNumber(&IDotNetErrorService::showError), 1);
}

}  // namespace
