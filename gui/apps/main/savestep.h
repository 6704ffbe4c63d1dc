// The last step of the command-line flow: saves the document under a name.
#pragma once

#include "interfaces/IOroRunOutcome.h"

class IInfoBar2;
class IScriptEngine;
class OroString;

// `bar` and `engine` may be null. What goes wrong is the save service's business, which reports it.
// Tells what became of the file for the outcome of the run; nothing else looks at it.
OroRunResult saveFile(const OroString& file, IInfoBar2* bar, IScriptEngine* engine);
