#include "orobasictypes/oroclasswalker.h"

#include "orobasictypes/iorounknown.h"
#include "orobasictypes/oromodule.h"

namespace {

void fillIdentity(OroComponentIdentity& identity) {
  if (identity.filled) return;
  identity = oroModuleIdentity();
  identity.filled = true;
}

void empty(OroClassWalker& walker) {
  walker.records->setCount(0);
  walker.parents->setCount(0);
}

// A class meets its interfaces again below its base class, and the first record stands for the
// object itself, whoever is its parent.
bool isRepeated(const OroClassRecordList& list, int32_t at) {
  for (int32_t j = 1; j < at; ++j) {
    if (!list[j].name.equals(list[at].name)) continue;
    if (j == 1 || list[j].parent.equals(list[at].parent)) return true;
  }
  return false;
}

void reduce(OroClassRecordList& list) {
  for (int32_t i = list.count(); i >= 2; --i) {
    if (isRepeated(list, i)) list.remove(i);
  }
}

}  // namespace

void oroVisitClass(const char* name, int32_t isClass, OroClassWalker* walker) {
  if (walker->identity != nullptr) {
    fillIdentity(*walker->identity);
    return;
  }
  const KelCString borrowed = KelCString::borrow(name);
  if (!walker->stopped && walker->stopSet != nullptr) {
    walker->stopped = walker->stopSet->find(borrowed) != nullptr;
  }
  if (walker->stopped) {
    empty(*walker);
    return;
  }
  OroArray<KelCString>& parents = *walker->parents;
  const KelCString parent = parents.isEmpty() ? KelCString() : parents.last();
  walker->records->add({borrowed, isClass, parent});
  if (isClass != 0) parents.add(borrowed);
}

void oroLeaveClass(OroClassWalker* walker) {
  if (walker->identity != nullptr) return;
  if (walker->stopped) {
    empty(*walker);
  } else {
    walker->parents->pop();
  }
}

bool oroObjectIdentity(IOroUnknown* object, OroComponentIdentity& identity) {
  if (object == nullptr) return false;
  identity = OroComponentIdentity();
  OroClassWalker walker;
  walker.identity = &identity;
  object->queryInterface(nullptr, &walker);
  return true;
}

bool oroObjectHierarchy(IOroUnknown* object, OroClassRecordList& list) {
  if (object == nullptr) return false;
  OroNameSet stopSet(6);
  for (const char* name : {"IOroComponent", "IOroComponentManager", "IOroComponentLoader",
                           "IOroComponentContainer", "KelComponentManager"}) {
    stopSet.insert(KelCString::borrow(name), 1);
  }
  OroArray<KelCString> parents;
  list.setCount(0);
  OroClassWalker walker{&parents, &list, &stopSet, nullptr, false};
  object->queryInterface(nullptr, &walker);
  reduce(list);
  return true;
}
