// IKelDataFilter: picks the items that a visitor takes part in. Visitors hold it counted.
#pragma once

#include "orobasictypes/iorounknown.h"

class IKelDataItem;

class IKelDataFilter : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataFilter"; }

  // True if the item takes part.
  virtual bool Accept(IKelDataItem* item) = 0;
};
