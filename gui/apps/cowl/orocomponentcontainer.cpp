#include "gui/apps/cowl/orocomponentcontainer.h"

#include "interfaces/IOroComponent.h"

OroComponentContainer::~OroComponentContainer() { delete static_cast<IOroUnknown*>(component_); }

IOroComponent* OroComponentContainer::component() {
  if (uninitialised_) {
    uninitialised_ = false;  // first: the component may ask for itself
    component_->initialise(broker_);
  }
  return component_;
}
