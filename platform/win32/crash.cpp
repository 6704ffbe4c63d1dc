#include "platform/crash.h"

#include <csignal>

#include "platform/process.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

void endAtOnce(int) { endProcessNow(0); }

}  // namespace

void installCrashHandler(CrashHandler handler) { std::signal(SIGSEGV, handler); }

void installSecondFaultHandler() { std::signal(SIGSEGV, endAtOnce); }

void removeCrashHandler() { std::signal(SIGSEGV, SIG_DFL); }

}  // namespace platform
