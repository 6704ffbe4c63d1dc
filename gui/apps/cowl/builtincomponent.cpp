#include "gui/apps/cowl/builtincomponent.h"

#include "gui/apps/cowl/cowlcomponent.h"
#include "gui/apps/cowl/orocomponentcontainer.h"
#include "interfaces/IOroComponentManager.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/sptr.h"

void registerBuiltInComponent() {
  const SPtr<IOroComponentManager> manager;
  if (!manager) return;
  auto* const container = new OroComponentContainer(new CowlComponent, manager.get(), oroBroker());
  if (!manager->registerContainer(kCowlComponentId, KelCString(), container)) delete container;
}
