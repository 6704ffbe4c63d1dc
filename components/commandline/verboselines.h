// The lines of the option -verbose: what was loaded and done, from where, in what time. They go to
// standard error, since standard output may carry the progress records. Main thread.
#pragma once

#include <cstdint>

class OroString;

// Nanoseconds since some fixed moment; never goes back.
int64_t steadyNanoseconds();

// Whether the option was given.
bool isVerbose();

// One line for each component library that was loaded, or failed to load, since the last call.
void printNewLoads();

// One line for a step of the run: its name, its file, whether it went well.
void printStep(const char* name, const OroString& subject, bool good, int64_t nanoseconds);
