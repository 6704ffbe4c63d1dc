// IOroDocObject: one named object of a document.
//
// Reached through an IOroDocObjectItr and owned by the document. Main thread.
#pragma once

#include "orobasictypes/iorounknown.h"

class OroString;
struct GUID;

class IOroDocObject : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDocObject"; }

  // The name, borrowed from the object.
  virtual const OroString& name() = 0;

  // The object's data of this class, or null; borrowed from the object.
  virtual IOroUnknown* data(const GUID& classId) = 0;
};
