#include "orobasictypes/oromodule.h"

#include "interfaces/IOroObjBroker.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/testaccess.h"

namespace {

constexpr OroComponentIdentity hostIdentity() {
  return {KelCString::borrow("cowlcomponent"), KelCString(), GUID{}, false};
}

constinit OroComponentIdentity identity = hostIdentity();

// The broker of the group that this module was loaded for; null for most modules.
IOroObjBroker* groupBroker(IOroObjBroker& broker) {
  if (identity.groupName.isEmpty()) return nullptr;
  return broker.groupBroker(identity.groupName, false);
}

}  // namespace

namespace oromodule {

constinit IOroObjBroker* broker = nullptr;

void countUpLocked(int32_t* count) { broker->countUp(count); }

bool countDownLocked(int32_t* count) { return broker->countDown(count); }

}  // namespace oromodule

OroComponentIdentity& oroModuleIdentity() { return identity; }

int32_t oroGetService(const KelCString& interfaceName, void** out) {
  IOroObjBroker* const broker = oroBroker();
  if (broker == nullptr) return 0;
  IOroObjBroker* const group = groupBroker(*broker);
  if (group != nullptr && group->getService(interfaceName, out) == 1) return 1;
  return broker->getService(interfaceName, out);
}

int32_t oroCreateObject(const GUID& classId, const KelCString& interfaceName, void** out) {
  IOroObjBroker* const broker = oroBroker();
  if (broker == nullptr) return 0;
  IOroObjBroker* const group = groupBroker(*broker);
  if (group != nullptr && group->createObject(classId, interfaceName, out) == 1) return 1;
  return broker->createObject(classId, interfaceName, out);
}

void testaccess::resetModule() {
  oroSetBroker(nullptr);
  identity = hostIdentity();
  kelSetAssertCallback(nullptr, nullptr);
}
