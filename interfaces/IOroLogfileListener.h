// IOroLogfileListener: an error listener that writes to a file, seen from whoever sets it up.
//
// Choose the file once with setLogFile; reports before that are lost. Same threads as
// IOroErrorListener.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;
class OroPath;
class OroString;

class IOroLogfileListener : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroLogfileListener"; }

  // As IOroErrorListener::onError.
  virtual void onError(const OroString& text, const int32_t* severity,
                       const KelCString& detail) = 0;
  // Replaces what is in the file. Only the first call counts, even when it could not open the file.
  virtual void setLogFile(const OroPath& path) = 0;
};
