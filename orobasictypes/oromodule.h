// What each module (the executable, every component library) holds for itself: the way to the
// broker and its component identity. Each module is linked with its own copy of this.
//
// The executable sets its broker pointer when it has made the broker; a component library sets it
// in IOroComponent::initialise. Before that, and after the broker is gone, services are simply
// absent and counts change without a lock.
#pragma once

#include <cstdint>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroguid.h"

class IOroObjBroker;

// Which module made an object. The host's component id is all zero and its group is empty.
struct OroComponentIdentity {
  KelCString componentName;  // "cowlcomponent" in the host
  KelCString groupName;      // not empty in a component that was loaded for a named group
  GUID componentId;
  bool filled = false;  // used by class walks: the first class visited answers
};

// This module's identity, changed while the module starts and only read afterwards.
OroComponentIdentity& oroModuleIdentity();

namespace oromodule {

extern IOroObjBroker* broker;  // not owned; null before it is made and after it is gone

void countUpLocked(int32_t* count);
bool countDownLocked(int32_t* count);

}  // namespace oromodule

inline IOroObjBroker* oroBroker() { return oromodule::broker; }
inline void oroSetBroker(IOroObjBroker* broker) { oromodule::broker = broker; }

// Stores the service of this interface name in *out, borrowed, and returns 1; 0 when there is
// none. Without a broker 0, and *out is left alone. Allocates nothing for a published service.
// The module's group broker is asked first where the module has a group.
int32_t oroGetService(const KelCString& interfaceName, void** out);

// Stores a new (or shared) object of the class in *out, borrowed: its count is 0 until the caller
// takes a reference. Returns 1; 0 without a broker or on failure, which may leave *out alone.
int32_t oroCreateObject(const GUID& classId, const KelCString& interfaceName, void** out);

// All reference counts of the process change here: under the broker's lock, or directly without a
// broker. oroCountDown is true when the count fell to zero; without a broker the count then reads
// -42, the mark of a dead object, which nobody tests.
inline void oroCountUp(int32_t* count) {
  if (oromodule::broker != nullptr) [[likely]] {
    oromodule::countUpLocked(count);
  } else {
    ++*count;
  }
}

inline bool oroCountDown(int32_t* count) {
  if (oromodule::broker != nullptr) [[likely]]
    return oromodule::countDownLocked(count);
  if (--*count != 0) return false;
  *count = -42;
  return true;
}
