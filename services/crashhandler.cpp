#include "services/crashhandler.h"

#include "interfaces/IDotNetErrorService.h"
#include "interfaces/IMainApplication.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"
#include "platform/crash.h"
#include "platform/process.h"
#include "services/errorservice.h"

namespace {

constexpr int kExitStatus = 0;

bool wantsSilentEnd() {
  SPtr<IMainApplication> application;
  return application && application->endsSilently();
}

void showInOtherToolkit(const OroString& message) {
  SPtr<Velmora::IOroRegistry> registry;
  KelCString key("App/WPF Application");
  if (!registry || !registry->valueEquals(key, "true")) return;
  SPtr<IDotNetErrorService> errors;
  if (errors) errors->showError(OroString::empty(), message);
}

}  // namespace

void oroStandardCrashHandler(int signalNumber) {
  ErrorService* const service = ErrorService::current();
  if (service == nullptr) {
    platform::removeCrashHandler();  // the access is tried again on return, and must not loop
    return;
  }
  platform::installSecondFaultHandler();
  if (wantsSilentEnd()) platform::endProcessNow(kExitStatus);
  OroString message;
  oroTranslate(message, "Unknown Error %1 occurred.\nApplication will close.",
               OroString(signalNumber));
  service->report(message, 1, KelCString());
  showInOtherToolkit(message);
  // Not exit(): destructors have no business in a broken process.
  platform::endProcessNow(kExitStatus);
}
