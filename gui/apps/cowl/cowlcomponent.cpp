#include "gui/apps/cowl/cowlcomponent.h"

#include "gui/apps/cowl/builtincomponent.h"
#include "gui/apps/cowl/cowlimageadder.h"
#include "gui/apps/cowl/productfacts.h"
#include "orobasictypes/kelpool.h"

CowlComponent::~CowlComponent() { kelPoolShutdown(); }

int32_t CowlComponent::getClassObject(const GUID& classId, IOroUnknown** out) {
  *out = nullptr;
  if (classId == kCowlAppClass) {
    *out = theApp();
  } else if (classId == kCowlImageAdderClass) {
    *out = new CowlImageAdder;
  }
  return *out != nullptr ? 1 : 0;
}

IOroUnknown* CowlComponent::theApp() {
  if (!app_) {
    app_ = new CowlApp;
    fillProductFacts();
  }
  return app_.object();
}
