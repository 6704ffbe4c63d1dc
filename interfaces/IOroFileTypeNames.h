// IOroFileTypeNames: what the formats of files are called, for people.
//
// Offered beside IFileTypeService by the same object, which may lack it. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroPath;
class OroString;

class IOroFileTypeNames : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroFileTypeNames"; }

  // The name of the format that this file is opened as, in English. False for a file that nothing
  // opens; a file that is there is looked into where its name does not tell.
  virtual bool formatName(const OroPath& path, OroString& name) = 0;
};
