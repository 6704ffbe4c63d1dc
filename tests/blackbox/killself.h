#pragma once

// Ends the process from within as another one would: by signal 9 on Linux, by TerminateProcess with
// 9 on Windows. No handler, no destructor and no flush comes in between. Any thread.

namespace tests {

[[noreturn]] void killSelf();

/// The exit code that runChild gives for such an end.
extern const int killedExitCode;

}  // namespace tests
