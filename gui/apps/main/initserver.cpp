#include "gui/apps/main/initserver.h"

#include "interfaces/IKelInitServer.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentManager.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr GUID kInitServerClass = {
    0x87B8EFFD, 0xA228, 0x495D, {0x96, 0xE0, 0xA5, 0x0F, 0xDB, 0xA4, 0x25, 0xA3}};

void reportError(const OroString& text) {
  SPtr<IOroErrorService> errors;
  if (errors) errors->report(text, 1, KelCString());
}

// The library is kept under the all-zero id: no description can take its place.
bool setPath(IOroComponentManager* manager, const OroPath& path) {
  const int32_t result = manager->setLibraryPath(GUID{}, KelCString(), path);
  if (result == 1) return true;
  OroString text;
  reportError(oroTranslate(text,
                           "Fatal error: could not register init server component (%1); error "
                           "code was %2",
                           path, OroString(result)));
  return false;
}

IOroComponent* initServerComponent(IOroComponentManager* manager) {
  OroPath path(oroDirPath("components"));
  path.append(OroString("initserver"));
  if (!setPath(manager, path)) return nullptr;
  IOroComponent* component = nullptr;
  manager->getComponent(GUID{}, KelCString(), &component);
  return component;  // null: the loader has said what there was to say
}

}  // namespace

IKelInitServer* loadInitServer(IOroComponentManager* manager) {
  IOroComponent* component = initServerComponent(manager);
  if (component == nullptr) return nullptr;
  IOroUnknown* object = nullptr;
  const int32_t result = component->getClassObject(kInitServerClass, &object);
  OroString text;
  if (result != 1) {  // a shared object is no init server: it is used once and goes
    reportError(oroTranslate(text,
                             "Fatal error: could not obtain init server object; error code was %1",
                             OroString(result)));
    return nullptr;
  }
  IKelInitServer* initServer = oroQuery<IKelInitServer>(object);
  if (initServer == nullptr) {
    reportError(oroTranslate(text,
                             "Fatal error: could not obtain the required interface on the init "
                             "server object"));
  }
  return initServer;
}
