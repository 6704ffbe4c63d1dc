#include "tests/blackbox/killself.h"

#include <csignal>

#include "platform/posix/posixgate.h"

namespace tests {

const int killedExitCode = 128 + SIGKILL;

void killSelf() {
  kill(getpid(), SIGKILL);
  for (;;) pause();
}

}  // namespace tests
