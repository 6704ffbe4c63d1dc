// IPtr<T>: holds an interface pointer and one reference on its object.
//
//   IPtr<IOroRegIter> walk(registry->newIterator(key));
//   if (walk) walk->first();
//
// Making or assigning from a raw pointer takes a reference; there is no adopting form, and a move
// is a copy, so that counts are as the code reads. Null is normal. One instance must not be used
// by two threads at once.
#pragma once

#include "orobasictypes/iorounknown.h"

template <class T, class U = IOroUnknown>
class IPtr {
 public:
  IPtr() noexcept = default;
  IPtr(T* pointer) : interface_(pointer), object_(pointer) {  // NOLINT: implicit on purpose
    if (object_ != nullptr) object_->addRef();
  }
  IPtr(const IPtr& other) : IPtr(other.interface_) {}
  virtual ~IPtr() noexcept {
    if (object_ != nullptr) object_->release();
    interface_ = nullptr;
    object_ = nullptr;
  }

  IPtr& operator=(T* pointer) {
    if (pointer == interface_) return *this;
    U* const object = pointer;
    if (object != nullptr) object->addRef();     // first: it may be the same object
    if (object_ != nullptr) object_->release();  // while it is held, as when the holder goes
    interface_ = pointer;
    object_ = object;
    return *this;
  }
  IPtr& operator=(const IPtr& other) { return *this = other.interface_; }

  T* get() const { return interface_; }
  U* object() const { return object_; }
  T* operator->() const { return interface_; }
  T& operator*() const { return *interface_; }
  explicit operator bool() const { return interface_ != nullptr; }

 private:
  T* interface_ = nullptr;  // null together with object_
  U* object_ = nullptr;     // the same object, as the type that counts
};
