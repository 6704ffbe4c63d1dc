// OroObject: the root of all classes whose objects are destroyed through a pointer to a base.
//
// It has no data. Objects with a reference count derive from OroShared; everything that is reached
// by the name of an interface derives from IOroUnknown.
#pragma once

class OroObject {
 public:
  virtual ~OroObject() = default;
};
