// The error log of a start: a file that gets every report from the first moment on.
//
// For a start that fails before anything can be shown. It is asked for with the environment
// variable CREATE_ERROR_LOG_AT_STARTUP. Main thread.
#pragma once

class OroPath;

// True when the variable is exactly "1".
bool oroWantsStartupErrorLog();

// Adds a log file listener to the error service. Nothing without an error service.
void oroCreateStartupErrorLog();

// Where the log lies: a file named ".log" in a directory named like the executable without its
// extension; before the arguments are recorded, named like the product in the directory of the
// executable. Nobody makes the directory.
OroPath oroErrorLogPath();
