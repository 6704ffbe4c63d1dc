#include "platform/crash.h"

#include <cstddef>

#include "platform/posix/posixgate.h"
#include "platform/process.h"

namespace platform {
namespace {

// The report translates, looks services up and writes: it needs room.
constexpr std::size_t reportStackSize = 256 * 1024;
alignas(16) char reportStack[reportStackSize];

// A handler may be entered again while it runs, which the system would otherwise take as a reason
// to kill the process before the second handler is asked.
void install(CrashHandler handler) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_ONSTACK | SA_NODEFER;
  sigemptyset(&action.sa_mask);
  sigaction(SIGSEGV, &action, nullptr);
}

void endAtOnce(int) { endProcessNow(0); }

}  // namespace

void installCrashHandler(CrashHandler handler) {
  stack_t stack = {};
  stack.ss_sp = reportStack;
  stack.ss_size = reportStackSize;
  sigaltstack(&stack, nullptr);
  install(handler);
}

void installSecondFaultHandler() { install(endAtOnce); }

void removeCrashHandler() { install(SIG_DFL); }

}  // namespace platform
