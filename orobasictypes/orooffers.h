// OroOffers: the one list from which a class answers queryInterface, getClassName and class walks.
//
//   class KelThing : public IOroThing, public IOroThingV2 {
//    public:
//     static constexpr const char* className() { return "KelThing"; }
//     using Offers = OroOffers<KelThing, IOroThing, IOroThingV2>;
//     void queryInterface(const char* name, void* out) override {
//       Offers::query(*this, name, out);
//     }
//     const char* getClassName() const override { return className(); }
//   };
//
// A class over another concrete class lists it with OroOffersOver<KelThing, KelBase, IOroThing...>.
// The order is fixed: class name, "IOroUnknown", the interfaces as listed, then the base class.
#pragma once

#include <cstring>

#include "orobasictypes/iorounknown.h"
#include "orobasictypes/oroclasswalker.h"

namespace orooffers {

template <class Interface, class Class>
bool offer(Class& self, const char* name, void*& slot) {
  if (std::strcmp(name, Interface::interfaceName()) != 0) return false;
  slot = static_cast<Interface*>(&self);
  return true;
}

// Answers from this class's own list; false when it does not hold the name. Null is stored first.
template <class Class, class... Interfaces>
bool queryOwn(Class& self, const char* name, void*& slot) {
  slot = nullptr;
  if (std::strcmp(name, Class::className()) == 0) {
    slot = &self;
    return true;
  }
  if (std::strcmp(name, IOroUnknown::interfaceName()) == 0) {
    slot = static_cast<IOroUnknown*>(&self);
    return true;
  }
  return (offer<Interfaces>(self, name, slot) || ...);
}

template <class Class, class... Interfaces>
void visitOwn(OroClassWalker* walker) {
  oroVisitClass(Class::className(), 1, walker);
  (oroVisitClass(Interfaces::interfaceName(), 0, walker), ...);
}

}  // namespace orooffers

template <class Class, class... Interfaces>
struct OroOffers {
  static void query(Class& self, const char* name, void* out) {
    if (name == nullptr) {
      orooffers::visitOwn<Class, Interfaces...>(static_cast<OroClassWalker*>(out));
    } else {
      orooffers::queryOwn<Class, Interfaces...>(self, name, *static_cast<void**>(out));
    }
  }
};

template <class Class, class Base, class... Interfaces>
struct OroOffersOver {
  static void query(Class& self, const char* name, void* out) {
    if (name == nullptr) {
      auto* walker = static_cast<OroClassWalker*>(out);
      orooffers::visitOwn<Class, Interfaces...>(walker);
      self.Base::queryInterface(nullptr, out);
      oroLeaveClass(walker);
    } else if (!orooffers::queryOwn<Class, Interfaces...>(self, name, *static_cast<void**>(out))) {
      self.Base::queryInterface(name, out);
    }
  }
};
