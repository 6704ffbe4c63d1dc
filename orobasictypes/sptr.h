// SPtr<T>: a counted holder of the service whose interface is T, asked for when it is made.
//
//   SPtr<IDataStore> store;
//   if (store) store->GetInt("GUI/CommandLine", nullptr);
//
// It asks at each construction and holds nothing static; null when there is no such service, which
// every user tests. Asking for a published service allocates nothing.
#pragma once

#include "orobasictypes/iptr.h"
#include "orobasictypes/oromodule.h"

template <class T, class U = IOroUnknown>
class SPtr : public IPtr<T, U> {
 public:
  SPtr() : IPtr<T, U>(find()) {}
  using IPtr<T, U>::operator=;

 private:
  static T* find() {
    void* found = nullptr;  // oroGetService leaves it alone when there is no broker
    oroGetService(KelCString::borrow(T::interfaceName()), &found);
    return static_cast<T*>(found);
  }
};
