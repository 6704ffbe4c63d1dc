// IOroSubject: something that tells observers what happens to it; the broker tells its reports.
//
// Observers are borrowed: whoever attaches one detaches it before it dies, on the main thread. The
// thread that notifies calls them.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroObserver;
class KelCString;

class IOroSubject : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroSubject"; }

  // The observer attached last is not compared, not called and cannot be detached: callers attach
  // one more at the end and rely on it.
  virtual void attach(IOroObserver* observer) = 0;
  virtual void detach(IOroObserver* observer) = 0;

  // Tells the observers the text. A call from within an observer does nothing.
  virtual void notify(const KelCString& text, int32_t flag) = 0;
};
