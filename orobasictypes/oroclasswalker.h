// OroClassWalker: gathers the classes and interfaces of an object, for diagnostics.
//
// queryInterface(nullptr, walker) shows it the class tree through oroVisitClass and oroLeaveClass.
// Two ready-made walks cover the uses: which module made an object, and its hierarchy.
#pragma once

#include <cstdint>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"

class IOroUnknown;
struct OroComponentIdentity;

// One class or interface that was visited.
struct OroClassRecord {
  KelCString name;      // borrowed from the class
  int32_t isClass = 0;  // 1 for a concrete class, 0 for an interface
  KelCString parent;    // null for the first
};

using OroClassRecordList = OroArray<OroClassRecord>;   // filled from index 1
using OroNameSet = OroHashTable<KelCString, uint8_t>;  // the value means nothing

struct OroClassWalker {
  OroArray<KelCString>* parents = nullptr;  // stack; the last element is the current parent
  OroClassRecordList* records = nullptr;
  const OroNameSet* stopSet = nullptr;       // may be absent; a hit empties the walk for good
  OroComponentIdentity* identity = nullptr;  // when set, the walk only asks for the module
  bool stopped = false;
};

// Local to each module on purpose: the first class visited fills in the identity of its module.
void oroVisitClass(const char* name, int32_t isClass, OroClassWalker* walker);
void oroLeaveClass(OroClassWalker* walker);

// Which module made the object. False for a null object.
bool oroObjectIdentity(IOroUnknown* object, OroComponentIdentity& identity);

// The object's classes and interfaces, duplicates reduced; empty for objects of the framework
// itself. False for a null object.
bool oroObjectHierarchy(IOroUnknown* object, OroClassRecordList& list);
