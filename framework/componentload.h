// ComponentLoad: how the bringing up of one component went, told to whoever listens.
//
// The component manager itself reports nothing but that a file does not load; the program around it
// listens here to say more. The listener is called by the thread that loads, under the manager's
// mutex, and is set before any component is loaded.
#pragma once

#include <cstdint>

#include "interfaces/IOroLoadJournal.h"
#include "orobasictypes/orostring.h"

struct ComponentLoad {
  OroString path;
  OroLoadStep step = kOroLoadDone;
  int32_t answer = 0;       // the version, or else the status, that the entry point gave
  int64_t nanoseconds = 0;  // of the whole, the component's own start included
  bool silent = false;      // the registry asks for silence about this library
  bool reported = false;    // the user has been told
};

using ComponentLoadListener = void (*)(const ComponentLoad& load, void* context);

// Null for none. The context is handed to the listener.
void setComponentLoadListener(ComponentLoadListener listener, void* context);

// Tells the listener, if there is one.
void tellComponentLoad(const ComponentLoad& load);

// Whether a report has the loader's words about this library, which it did not load. They come at
// each request; a person who read them need not read them again.
bool isLoaderReport(const OroString& report, const ComponentLoad& load);
