#include "gui/apps/cowlinfo/infosession.h"

#include <algorithm>
#include <utility>

#include "framework/kelcomponentmanager.h"
#include "gui/apps/cowlinfo/infotext.h"
#include "gui/apps/main/appglobals.h"
#include "gui/apps/main/initserver.h"
#include "interfaces/IKelInitServer.h"
#include "interfaces/IMemoryInit.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/sharedlibrary.h"

InfoSession::InfoSession() {
  application_.initEssential();
  SPtr<IOroErrorService> errors;
  errors->removeWinBoxDisplay();
  errors->addListener(listener_.get());
  setComponentLoadListener(
      [](const ComponentLoad& load, void* context) {
        static_cast<InfoSession*>(context)->loads_.push_back(load);
      },
      this);
  platform::setLibraryDirectory(oroDirPath("exe").wideText());
}

InfoSession::~InfoSession() {
  setComponentLoadListener(nullptr, nullptr);
  SPtr<IOroErrorService> errors;
  errors->removeListener(listener_.get());
  oroAppGlobals().componentManager->shutDownComponents();
  // What was paged out of memory goes with the process, as at the end of the application.
  SPtr<OroMM::IOroMManager> manager;
  if (IMemoryInit* const memory = oroQuery<IMemoryInit>(manager.get())) memory->end();
}

bool InfoSession::loadComponents() {
  const OroAppGlobals& globals = oroAppGlobals();
  const IPtr<IKelInitServer> initServer(loadInitServer(globals.componentManager));
  if (!initServer) return false;
  initServer->setClassRegistration(globals.classRegistration);
  if (!initServer->readDescription(0)) return false;
  initServer->finish();
  return true;
}

const ComponentLoad* InfoSession::loadOf(const OroString& library) const {
  for (const ComponentLoad& load : loads_) {
    if (load.path == library) return &load;
  }
  return nullptr;
}

// A load is noted behind the loader's words about it, so the first ones pass.
bool InfoSession::isToldAgain(const OroString& report) const {
  return std::any_of(loads_.begin(), loads_.end(),
                     [&](const ComponentLoad& load) { return isLoaderReport(report, load); });
}

std::vector<std::string> InfoSession::takeReports() { return std::exchange(listener_->texts, {}); }

void InfoSession::Listener::onError(const OroString& text, const int32_t*, const KelCString&) {
  if (!session_.isToldAgain(text)) texts.push_back(shownText(text));
}
