// The script engine within the process: what it leaves in the settings when a script has ended.

#include "components/pythonscript/pythonengine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "base/basic/kelcustomdatastore.h"
#include "tests/support/fakebroker.h"
#include "tests/tempfolder.h"

namespace {

using testing::HasSubstr;

class PythonEngineTest : public testing::Test {
 protected:
  PythonEngineTest() { broker_.registerService(KelCString::borrow("IDataStore"), store_.get()); }

  // The error that the script leaves.
  std::string run(const std::string& source) {
    folder_.write("do.py", source);
    testing::internal::CaptureStderr();
    engine()->runScript(OroString(folder_.file("do.py").u16string().c_str()), OroString());
    testing::internal::GetCapturedStderr();
    return store_->GetOroString("Python/Error String", nullptr).toUtf8();
  }
  bool interrupted() { return store_->GetInt("Python/Interrupted", nullptr) == 1; }

  // There is one interpreter in a process, for as long as that lives.
  static PythonEngine* engine() {
    static const IPtr<PythonEngine> one(new PythonEngine);
    return one.get();
  }

  tests::TempFolder folder_;
  tests::FakeBroker broker_;
  IPtr<IDataStore> store_{new KelCustomDataStore};
};

constexpr const char* kSignal = "import os, signal\nos.kill(os.getpid(), signal.SIGINT)\n";
constexpr const char* kCaughtSignal =
    "import os, signal\n"
    "try:\n"
    "    os.kill(os.getpid(), signal.SIGINT)\n"
    "    while True: pass\n"
    "except KeyboardInterrupt:\n";

// First, since the interpreter's start is part of it.
TEST_F(PythonEngineTest, TheInterruptIsTheHostsBehindTheFirstScriptAndTheSecond) {
  std::signal(SIGINT, SIG_DFL);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(run("x = 1\n"), "");
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL) << i;
  }
}

TEST_F(PythonEngineTest, AScriptThatComesToItsEndLeavesNoError) {
  EXPECT_EQ(run("x = 1\n"), "");
  EXPECT_FALSE(interrupted());
}

TEST_F(PythonEngineTest, AnErrorIsNoInterrupt) {
  EXPECT_THAT(run("raise ValueError('no')\n"), HasSubstr("ValueError: no"));
  EXPECT_FALSE(interrupted());
  EXPECT_THAT(run("import sys\nsys.exit(3)\n"), HasSubstr("3"));
  EXPECT_FALSE(interrupted());
}

TEST_F(PythonEngineTest, AnInterruptIsAnErrorAndASettingUntilTheNextScript) {
  EXPECT_THAT(run(std::string(kSignal) + "while True: pass\n"), HasSubstr("KeyboardInterrupt"));
  EXPECT_TRUE(interrupted());
  EXPECT_EQ(run("x = 1\n"), "");
  EXPECT_FALSE(interrupted());
}

TEST_F(PythonEngineTest, AnInterruptThatTheScriptMakesAnotherEndOfIsOne) {
  EXPECT_THAT(run(std::string(kCaughtSignal) + "    raise ValueError('half done')\n"),
              HasSubstr("ValueError: half done"));
  EXPECT_TRUE(interrupted());
  EXPECT_EQ(run(std::string(kCaughtSignal) + "    raise SystemExit(0)\n"), "");
  EXPECT_TRUE(interrupted());
}

TEST_F(PythonEngineTest, AnInterruptThatTheScriptTookIsNone) {
  EXPECT_EQ(run(std::string(kCaughtSignal) + "    pass\n"), "");
  EXPECT_FALSE(interrupted());
}

TEST_F(PythonEngineTest, AnInterruptOfTheLastWorkOfAScriptIsOne) {
  run("import threading\n"
      "def work():\n"
      "    import os, signal, time\n"
      "    time.sleep(0.1)\n"
      "    os.kill(os.getpid(), signal.SIGINT)\n"
      "    time.sleep(0.2)\n"
      "threading.Thread(target=work).start()\n");
  EXPECT_TRUE(interrupted());
}

TEST_F(PythonEngineTest, SignalsAreTheProcesssOwnAgainBehindAScript) {
  EXPECT_EQ(run("import signal\nsignal.signal(signal.SIGALRM, print)\n"
                "signal.signal(signal.SIGTERM, signal.SIG_IGN)\n"
                "signal.setitimer(signal.ITIMER_REAL, 1000)\n"),
            "");
  EXPECT_EQ(run("import signal\n"
                "assert signal.getsignal(signal.SIGALRM) is signal.SIG_DFL\n"
                "assert signal.getsignal(signal.SIGTERM) is signal.SIG_DFL\n"
                "assert signal.getitimer(signal.ITIMER_REAL)[0] == 0\n"),
            "");
}

}  // namespace
