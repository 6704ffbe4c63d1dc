// What the process does about an invalid memory access: tell the user, then end.
//
// The error service installs it. It runs in the thread that failed, on whatever is left of the
// process, so it asks for little and trusts nothing that it can do without.
#pragma once

// Reports the crash through the current error service and ends the process with status 0. Without
// an error service the signal goes back to the system.
void oroStandardCrashHandler(int signalNumber);
