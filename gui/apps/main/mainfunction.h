// The main function of the process, apart from its entry so that it can be run in tests.
#pragma once

#include <cstdint>

class IOroAppMainHook;

// Runs the application from its arguments to its end and returns 0 or 1; the entry drops it. The
// hook is for a program that embeds the application; the process's own entry has none.
int32_t oroMainFunction(int argc, const char* const* argv, IOroAppMainHook* hook = nullptr);

// Ends the process with the status of the run, where a component offers one and the user asked for
// it; returns otherwise. For the entry, behind the main function.
void oroEndWithStatus();
