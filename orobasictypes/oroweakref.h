// OroWeakRef: watches an object without keeping it alive.
//
// Get one from OroShared::getWeakRef, call addRef on it, read target() when the object is needed,
// call release when done. The target becomes null exactly once, when the object's count reaches
// zero and before its destructor runs. There is no lock-and-upgrade operation on purpose: weak
// references are read on the thread that owns the object.
#pragma once

#include "orobasictypes/oroshared.h"

class OroWeakRef : public OroShared {
 public:
  explicit OroWeakRef(OroShared* target) : target_(target) {}

  // A weak reference stands for itself: nothing is made and no reference is taken.
  OroWeakRef* getWeakRef() override { return this; }

  OroShared* target() const { return target_; }
  // Called by the target alone, when its count has reached zero.
  void sever() { target_ = nullptr; }

 private:
  OroShared* target_;  // not counted; null once the target is gone
};
