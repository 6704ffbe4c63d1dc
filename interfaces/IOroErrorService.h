// IOroErrorService: the one funnel through which a failure reaches the user.
//
// Hand it a translated text and a severity; it adds the current context and passes the result to
// every listener in turn. Reports of all threads are serialised. Listeners, flags and contexts are
// not guarded: listeners are added during start-up, contexts belong to the main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroErrorListener;
class KelCString;
class OroString;
class OroStringArray;

class IOroErrorService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroErrorService"; }

  // Takes a reference; a listener that is there already is left as it is.
  virtual void addListener(IOroErrorListener* listener) = 0;
  // Takes the listener out and releases it; an unknown one is ignored.
  virtual void removeListener(IOroErrorListener* listener) = 0;

  // Severity 0 is a warning, 1 an error, 2 an error with the contexts appended, one a line, which
  // listeners see as 1. Blocks until all listeners have returned. Does nothing while inactive.
  virtual void report(const OroString& text, int32_t severity, const KelCString& detail) = 0;

  // "allowInteractiveAcknowledge": somebody may be asked; "errorsOnStandardError": a listener
  // prints the errors there, and nobody else needs to.
  virtual void setFlag(const KelCString& name, bool value) = 0;
  // False for an unknown name.
  virtual bool getFlag(const KelCString& name) = 0;
  // Takes the first message box listener out, if there is one.
  virtual void removeWinBoxDisplay() = 0;

  // What the program is doing, innermost last.
  virtual void pushContext(const OroString& text) = 0;
  virtual void popContext() = 0;
  // Bottom first, from index 1; what stood in the array is dropped.
  virtual void getContext(OroStringArray& out) = 0;
  virtual void clearContext() = 0;

  // While inactive all reports are dropped. Returns true.
  virtual bool setActive(bool value) = 0;
  virtual bool isActive() = 0;
};
