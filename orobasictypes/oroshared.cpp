#include "orobasictypes/oroshared.h"

#include "orobasictypes/oroweakref.h"

void OroShared::die() {
  sever();
  delete this;
}

// Before any destructor runs, so that nobody reaches a half-destroyed object.
void OroShared::sever() {
  if (weak_ == nullptr) return;
  weak_->sever();
  weak_->release();
  weak_ = nullptr;
}

OroWeakRef* OroShared::getWeakRef() {
  if (weak_ == nullptr) {
    weak_ = new OroWeakRef(this);
    weak_->addRef();
  }
  return weak_;
}
