// IOroUnknown: the root of all interfaces.
//
// Every interface derives virtually from it, so that one object has one reference count however
// many interfaces it offers. From one interface to another there is one way: queryInterface by
// name (oroQuery below writes the cast). The names are compared exactly; no type information of
// the language is used, since it does not cross module borders.
#pragma once

#include "orobasictypes/oroshared.h"

class IOroUnknown : public OroShared {
 public:
  static constexpr const char* interfaceName() { return "IOroUnknown"; }

  // With a name: `out` is the address of a void*, which receives the pointer to exactly the named
  // interface (or class), or null when the name is not offered, whatever stood there. The pointer
  // is borrowed. With a null name: `out` is an OroClassWalker*, which is shown the class tree.
  virtual void queryInterface(const char* name, void* out) = 0;

  // The class's name, valid for the life of the program.
  virtual const char* getClassName() const = 0;
};

// The interface T of an object, borrowed, or null; a null object has none.
template <class T, class Object>
T* oroQuery(Object* object) {
  void* found = nullptr;
  if (object != nullptr) object->queryInterface(T::interfaceName(), &found);
  return static_cast<T*>(found);
}

// The object as its concrete class T, borrowed, or null when it is of another class. Only sound
// within the module that defines T.
template <class T, class Object>
T* oroQueryClass(Object* object) {
  void* found = nullptr;
  if (object != nullptr) object->queryInterface(T::className(), &found);
  return static_cast<T*>(found);
}
