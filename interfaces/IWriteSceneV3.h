// IWriteSceneV3: the choice of a file format, offered by every writer of IFileTypeService.
//
// Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroPath;

class IWriteSceneV3 : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IWriteSceneV3"; }

  // Prepares for this file and returns the code of the save: below 1000 the objects are handed
  // over one by one, 1015 is the native file, other codes from 1000 on are errors that the save
  // reports.
  virtual int32_t prepare(const OroPath& path) = 0;
};
