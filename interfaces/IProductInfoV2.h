// IProductInfoV2: what IProductInfo gained later. Same object, same rules.
#pragma once

#include "interfaces/IProductInfo.h"

class IProductInfoV2 : public IProductInfo {
 public:
  static constexpr const char* interfaceName() { return "IProductInfoV2"; }

  // As shown to the user.
  virtual KelCString& displayVersion(KelCString& out) = 0;
  virtual KelCString& internalVersionText(KelCString& out) = 0;
};
