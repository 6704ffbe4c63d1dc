#include "orobasictypes/kelmemory.h"

#include <algorithm>

#include "interfaces/IMemChecker.h"
#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/kelmemoryservices.h"
#include "orobasictypes/keltruncate.h"
#include "orobasictypes/memlimitlistener.h"
#include "platform/memoryfigures.h"

namespace {

constexpr int64_t fallbackBytes = 1843200;
constexpr int32_t failure = -1;  // all bits set

int64_t unitOf(int32_t unit) { return std::max(unit, 1); }

int64_t whole(uint64_t bytes) { return static_cast<int64_t>(bytes); }

int32_t systemStatus(int64_t& free, int64_t& total, int64_t& swapFree, int64_t& swapTotal,
                     int64_t unit) {
  platform::MemoryFigures now;
  if (!platform::memoryFigures(now)) return failure;
  const int64_t allSwap =
      std::min(whole(now.pageFileTotal), whole(now.virtualTotal - now.physicalTotal));
  const int64_t freeSwap = std::min(
      {allSwap, whole(now.pageFileAvailable), whole(now.virtualAvailable - now.physicalAvailable)});
  free = whole(now.physicalAvailable) / unit;
  total = whole(now.physicalTotal) / unit;
  swapFree = freeSwap / unit;
  swapTotal = allSwap / unit;
  return 0;
}

// Beyond the range the sum wraps around, as the truncated product has already lost its meaning.
int64_t sum(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}

}  // namespace

int32_t kelMemoryStatus(int64_t& free, int64_t& total, int64_t& swapFree, int64_t& swapTotal,
                        int32_t unit) {
  const int64_t divisor = unitOf(unit);
  if (IMemChecker* const checker = kelmemory::activeChecker()) {
    return checker->GetMemoryStatus(free, total, swapFree, swapTotal,
                                    static_cast<int32_t>(divisor));
  }
  return systemStatus(free, total, swapFree, swapTotal, divisor);
}

int64_t kelMemoryAvailable(double swapFraction, int32_t unit) {
  kelMemLimitListener();
  int64_t free = 0;
  int64_t total = 0;
  int64_t swapFree = 0;
  int64_t swapTotal = 0;
  if (kelMemoryStatus(free, total, swapFree, swapTotal, unit) == failure) return -1;
  return sum(free, kelTruncate(swapFraction * static_cast<double>(swapFree)));
}

int64_t kelPhysicalMemoryFree(int32_t unit) {
  kelMemLimitListener();
  int64_t free = 0;
  int64_t total = 0;
  int64_t swapFree = 0;
  int64_t swapTotal = 0;
  return kelMemoryStatus(free, total, swapFree, swapTotal, unit) == failure ? -1 : free;
}

int64_t kelAddressableMemory(double swapFraction, int32_t unit) {
  const int64_t divisor = unitOf(unit);
  platform::MemoryFigures now;
  if (!platform::memoryFigures(now)) return fallbackBytes / divisor;
  const int64_t bytes =
      std::min(whole(now.physicalAvailable), whole(now.virtualAvailable + now.extendedAvailable));
  if (swapFraction == 0.0) return bytes / divisor;
  const double all =
      static_cast<double>(bytes) + swapFraction * static_cast<double>(now.pageFileAvailable);
  return kelTruncate(all / static_cast<double>(divisor));
}

int64_t kelVirtualMemoryFree(int32_t unit) {
  platform::MemoryFigures now;
  const bool told = platform::memoryFigures(now);
  return (told ? whole(now.virtualAvailable) : fallbackBytes) / unitOf(unit);
}

int64_t kelProcessMemoryUsed(int32_t unit) {
  const int64_t divisor = unitOf(unit);
  if (IMemChecker* const checker = kelmemory::activeChecker()) {
    return checker->GetProcessMemory(static_cast<int32_t>(divisor));
  }
  platform::WorkingSet used;
  if (platform::workingSet(used)) return whole(used.current) / divisor;
  platform::MemoryFigures now;
  platform::memoryFigures(now);  // all 0 when it does not tell
  return whole(now.virtualTotal - now.virtualAvailable) / divisor;
}

bool kelProcessWorkingSet(int64_t& current, int64_t& peak, int32_t unit) {
  platform::WorkingSet used;
  if (!platform::workingSet(used)) return false;
  current = whole(used.current) / unitOf(unit);
  peak = whole(used.peak) / unitOf(unit);
  return true;
}

bool kelProcessWorkingSet(int64_t& current, int32_t unit) {
  int64_t peak = 0;
  return kelProcessWorkingSet(current, peak, unit);
}

int64_t kelMemoryLimit() { return kelMemLimitListener().limit(); }
