#pragma once

// What happens on an invalid memory access. The first fault runs the handler that was installed,
// which may report; for the time of its work it installs the second handler, so that a fault in
// the report ends the process at once and cannot loop.
// Install on the main thread: on Linux the report runs on a stack of its own there, so that a
// fault of an exhausted stack is reported too.

namespace platform {

using CrashHandler = void (*)(int signalNumber);

/// Calls the handler on an invalid memory access. The handler must not return.
void installCrashHandler(CrashHandler handler);

/// From now on an invalid memory access ends the process at once with status 0.
void installSecondFaultHandler();

/// Gives the signal back to the system.
void removeCrashHandler();

}  // namespace platform
