// slot: an operation by its place in an object's virtual table.
//
//   slot<int32_t (*)(IThing*)>(thing, 1)(thing);  // the second own operation of IThing
//
// Modules are built apart, so the order of operations is part of an interface, and tests call by
// place. Through an interface pointer the interface's own operations come first, from 0. Through an
// IOroUnknown* the places are: 0 and 1 destructor (without and with freeing the storage), 2 addRef,
// 3 release, 4 releaseNoDestroy, 5 refCount, 6 getWeakRef, 7 queryInterface, 8 getClassName.
#pragma once

#include <bit>

namespace tests {

template <class Function, class Object>
Function slot(Object* object, int place) {
  void** const table = *reinterpret_cast<void***>(object);
  return std::bit_cast<Function>(table[place]);
}

}  // namespace tests
