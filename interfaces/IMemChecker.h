// IMemChecker: figures of the memory from a component that knows better than the system, such as
// one that watches a limit of the application's own.
//
// It counts only while IsActive says true. Any thread may ask.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IMemChecker : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IMemChecker"; }

  virtual bool IsActive() = 0;
  // All in units of so many bytes. -1 is a failure; anything else is success.
  virtual int32_t GetMemoryStatus(int64_t& free, int64_t& total, int64_t& swapFree,
                                  int64_t& swapTotal, int32_t unit) = 0;
  // What this process uses, in units of so many bytes.
  virtual int64_t GetProcessMemory(int32_t unit) = 0;
};
