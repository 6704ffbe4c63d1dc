#include "headless/attachheadless.h"

#include "headless/kelmockservice.h"
#include "headless/testaccess.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroObjBroker.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr const char* kServiceNames[] = {
    IInfoBar::interfaceName(),   IGuiBusyState::interfaceName(), IGuiStatusBar::interfaceName(),
    IGuiCursor::interfaceName(), IGuiThemeMgr::interfaceName(),
};

// The one of the process. Holds one reference, so that the broker's going does not end it.
KelMockService* service = nullptr;

void publishWhereMissing(IOroObjBroker& broker, const KelCString& name) {
  if (broker.hasService(name)) return;
  if (service == nullptr) {
    service = new KelMockService();
    service->addRef();
  }
  broker.registerService(name, service);
}

}  // namespace

bool attachHeadlessService() {
  if (IOroObjBroker* broker = oroBroker()) {
    for (const char* name : kServiceNames) publishWhereMissing(*broker, KelCString::borrow(name));
  }
  SPtr<IOroErrorService> errors;
  if (service != nullptr && errors) {
    errors->addListener(service);
    // Nobody may be there to answer a box; the records tell the error from now on.
    errors->removeWinBoxDisplay();
  }
  return true;
}

bool headlessDropsReports() { return service != nullptr && !service->keepsRecords(); }

bool detachHeadlessService() {
  if (service == nullptr) return true;
  SPtr<IOroErrorService> errors;
  if (errors) errors->removeListener(service);
  service->closeSinks();
  return true;
}

KelMockService* headlesstest::attachedService() { return service; }

void headlesstest::forgetService() {
  if (service != nullptr) service->release();
  service = nullptr;
  forgetPercent();
}
