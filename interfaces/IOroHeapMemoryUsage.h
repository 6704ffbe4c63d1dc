// IOroHeapMemoryUsage: a ledger of the memory that the application's containers hold, in bytes.
//
// It does not watch the heap: whoever allocates tells it. Changes are serialised; the getters read
// without a lock. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroHeapMemoryUsage : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroHeapMemoryUsage"; }

  virtual void Add(uint64_t bytes) = 0;
  virtual void Subtract(uint64_t bytes) = 0;
  // Subtracts what the heap has given for the block, which is not freed; 0 for null.
  virtual void SubtractBlock(const void* block) = 0;
  // From here on the peak is counted anew.
  virtual void SetMark() = 0;
  virtual uint64_t GetCurrent() = 0;
  // What was in use when the mark was last set.
  virtual uint64_t GetMark() = 0;
  // How far the use has risen above the mark since then. A use below the mark shows as a very large
  // peak at the next Add; kept.
  virtual uint64_t GetPeak() = 0;
};
