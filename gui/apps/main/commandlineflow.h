// The run of a process without an application starter: driven by its command line it opens a file,
// runs a script, saves a file, or hands over to the batch service.
//
// It only coordinates. Commands, document, script engine and batch are services of component
// libraries; one that is absent is passed over without a word. Where no records are asked for,
// errors stand on standard error. Main thread, once, between the start and the end of OroAppMain.
#pragma once

#include <cstdint>

class OroString;

// 0 on success, 1 after a refused command line or a failed script.
int32_t runCommandLine(int32_t argc, const OroString* argv);
