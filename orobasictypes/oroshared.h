// OroShared: an object that lives by a reference count and can be watched through a weak reference.
//
// A new object has a count of 0 and belongs to nobody until the first IPtr or addRef; an object
// that was never counted is deleted by whoever made it. Counts change under the broker's lock when
// there is a broker; making the weak reference is not guarded, so two threads must not do it at
// once. No class overrides the counting operations, so they are final; only OroWeakRef answers
// getWeakRef in its own way.
#pragma once

#include <cstdint>

#include "orobasictypes/oromodule.h"
#include "orobasictypes/oroobject.h"

class OroWeakRef;

class OroShared : public OroObject {
 public:
  OroShared() = default;
  // A copy is a new object: count 0, nobody watches it. Assignment leaves both alone.
  OroShared(const OroShared&) noexcept : OroObject() {}
  OroShared& operator=(const OroShared&) noexcept { return *this; }
  // Does nothing of its own: the weak reference has been severed by release() before.
  ~OroShared() override = default;

  virtual void addRef() final { oroCountUp(&count_); }
  // At zero: severs the weak reference first, then destroys the object. An addRef from the dying
  // object is a caller's error and is not noticed.
  virtual void release() final {
    if (oroCountDown(&count_)) die();
  }
  // As release(), severing included, but the object and its storage stay.
  virtual void releaseNoDestroy() final {
    if (oroCountDown(&count_)) sever();
  }
  // The count as it stands, read without the lock.
  virtual int32_t refCount() final { return count_; }
  // The weak reference, made at the first call. Borrowed: the one reference counted on it is the
  // object's own, so a holder calls addRef on it.
  virtual OroWeakRef* getWeakRef();

 private:
  void die();    // the last reference went: severs, then destroys
  void sever();  // tells the weak reference, if there is one, that this object is gone

  int32_t count_ = 0;
  OroWeakRef* weak_ = nullptr;  // null until someone asks
};
