// IOroDirService: directories by short name ("reports", "exe", "userconfig").
//
// Modules reach it through oroDirPath. It runs on the main thread.
#pragma once

#include "orobasictypes/iorounknown.h"

class OroPath;

class IOroDirService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDirService"; }

  // Never empty: an unknown name gives "C:". The reference stays valid for the life of the service
  // and shows the new path when the same name is asked for again.
  virtual const OroPath& getDir(const char* name) = 0;
  // Stores the path in the settings under "DefaultFileNameDirectory/" and the name, cut at 256
  // code units. Names that are computed ("exe", "language" ...) do not follow it.
  virtual void setDir(const char* name, const OroPath& path) = 0;
};
