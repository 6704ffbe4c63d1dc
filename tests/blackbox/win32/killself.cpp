#include "tests/blackbox/killself.h"

#include "platform/win32/win32gate.h"

namespace tests {

const int killedExitCode = 9;

void killSelf() {
  TerminateProcess(GetCurrentProcess(), 9);
  for (;;) Sleep(INFINITE);
}

}  // namespace tests
