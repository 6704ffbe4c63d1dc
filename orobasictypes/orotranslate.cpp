#include "orobasictypes/orotranslate.h"

#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "orobasictypes/sptr.h"
#include "orobasictypes/testaccess.h"

namespace {

struct ModuleTranslator {
  IPtr<IOroTranslator> held;
  bool initialised = false;  // the services have chosen what is held
};

// Never destroyed: texts are made until the process ends.
ModuleTranslator& moduleTranslator() {
  static auto& module = *new ModuleTranslator;
  return module;
}

// The component's own translator, else the application's.
void chooseByServices(ModuleTranslator& module) {
  SPtr<IOroTranslatorService> service;
  if (!service) return;
  module.held = service->getTranslator(oroModuleIdentity().componentId);
  if (!module.held) {
    SPtr<IOroTranslator> ofApplication;
    module.held = ofApplication.get();
  }
  module.initialised = true;
}

}  // namespace

IOroTranslator* oroModuleTranslator() {
  ModuleTranslator& module = moduleTranslator();
  if (module.held) return module.held.get();
  chooseByServices(module);
  if (!module.held) module.held = new OroTrivialTranslator<>;
  return module.held.get();
}

void oroSetModuleTranslator(IOroTranslator* translator) {
  ModuleTranslator& module = moduleTranslator();
  if (!module.initialised) module.held = translator;
}

void testaccess::resetModuleTranslator() {
  moduleTranslator().held = nullptr;
  moduleTranslator().initialised = false;
}

OroString& oroTranslate(OroString& out, const char* key) {
  return oroModuleTranslator()->translate(out, key);
}

OroString& oroTranslate(OroString& out, const char* key, const OroString& a1) {
  return oroModuleTranslator()->translate1(out, key, &a1);
}

OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2) {
  return oroModuleTranslator()->translate2(out, key, &a1, &a2);
}

OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3) {
  return oroModuleTranslator()->translate3(out, key, &a1, &a2, &a3);
}

OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3, const OroString& a4) {
  return oroModuleTranslator()->translate4(out, key, &a1, &a2, &a3, &a4);
}

OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3, const OroString& a4, const OroString& a5) {
  return oroModuleTranslator()->translate5(out, key, &a1, &a2, &a3, &a4, &a5);
}

OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3, const OroString& a4, const OroString& a5,
                        const OroString& a6) {
  return oroModuleTranslator()->translate6(out, key, &a1, &a2, &a3, &a4, &a5, &a6);
}

OroString& oroTranslateArray(OroString& out, const char* key, int32_t count,
                             const OroString* arguments) {
  return oroModuleTranslator()->translateArray(out, key, count, arguments);
}
