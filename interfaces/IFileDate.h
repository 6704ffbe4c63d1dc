// IFileDate: takes a calendar date from IFileUtil::fileDate, which calls the three in this order.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IFileDate : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IFileDate"; }

  virtual void setDay(int32_t day) = 0;      // 1 to 31
  virtual void setMonth(int32_t month) = 0;  // 1 to 12
  virtual void setYear(int32_t year) = 0;
};
