// ErrorService: passes every reported failure to the listeners, in order, under one mutex.
//
// The application main makes one early and publishes it as "IOroErrorService"; code that reports
// asks for that name. The constructor also installs the handler for invalid memory access. Reports
// may come from any thread; everything else belongs to the main thread.
#pragma once

#include <atomic>
#include <cstdint>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostringarray.h"
#include "platform/crash.h"
#include "platform/sync.h"

class ErrorService : public IOroErrorService {
 public:
  static constexpr const char* className() { return "ErrorService"; }

  // With `showBox` errors are shown in a message box. A null handler means the standard one, which
  // reports and ends the process.
  explicit ErrorService(bool showBox, platform::CrashHandler crashHandler = nullptr);
  ~ErrorService() override;
  ErrorService(const ErrorService&) = delete;
  ErrorService& operator=(const ErrorService&) = delete;

  // The service made last, null after it went. The crash handler reads it: it cannot ask a broker
  // whose tables may be what is damaged.
  static ErrorService* current();

  void addListener(IOroErrorListener* listener) override;
  void removeListener(IOroErrorListener* listener) override;
  void report(const OroString& text, int32_t severity, const KelCString& detail) override;
  void setFlag(const KelCString& name, bool value) override;
  bool getFlag(const KelCString& name) override;
  void removeWinBoxDisplay() override;
  void pushContext(const OroString& text) override;
  void popContext() override;
  void getContext(OroStringArray& out) override;
  void clearContext() override;
  bool setActive(bool value) override;
  bool isActive() override { return active_; }

  // Sets the flag "allowInteractiveAcknowledge", the only one that exists at the start.
  void setDefaultFlags();

  using Offers = OroOffers<ErrorService, IOroErrorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  void removeAt(int32_t index);

  OroArray<IOroErrorListener*> listeners_;  // one reference each
  OroHashTable<KelCString, bool> flags_;
  platform::KernelMutex mutex_;  // held while listeners run
  OroStringArray context_;       // innermost last
  std::atomic<bool> active_ = true;
};
