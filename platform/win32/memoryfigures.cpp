#include "platform/memoryfigures.h"

#include <algorithm>

#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

// What a job object allows its processes; 0 where there is no limit.
std::uint64_t jobLimit() {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
  if (!QueryInformationJobObject(nullptr, JobObjectExtendedLimitInformation, &limits, sizeof limits,
                                 nullptr)) {
    return 0;
  }
  const DWORD flags = limits.BasicLimitInformation.LimitFlags;
  return (flags & JOB_OBJECT_LIMIT_PROCESS_MEMORY) != 0 ? limits.ProcessMemoryLimit : 0;
}

}  // namespace

bool systemMemoryFigures(MemoryFigures& figures) {
  MEMORYSTATUSEX status = {};
  status.dwLength = sizeof status;
  if (!GlobalMemoryStatusEx(&status)) return false;
  figures.physicalTotal = status.ullTotalPhys;
  figures.physicalAvailable = status.ullAvailPhys;
  figures.pageFileTotal = status.ullTotalPageFile;
  figures.pageFileAvailable = status.ullAvailPageFile;
  figures.virtualTotal = status.ullTotalVirtual;
  figures.virtualAvailable = status.ullAvailVirtual;
  figures.extendedAvailable = status.ullAvailExtendedVirtual;
  return true;
}

bool systemWorkingSet(WorkingSet& figures) {
  const HANDLE process =
      OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, GetCurrentProcessId());
  if (process == nullptr) return false;
  PROCESS_MEMORY_COUNTERS counters = {};
  counters.cb = sizeof counters;
  const bool told = K32GetProcessMemoryInfo(process, &counters, sizeof counters) != 0;
  CloseHandle(process);
  if (told) figures = {counters.WorkingSetSize, counters.PeakWorkingSetSize};
  return told;
}

std::uint64_t memoryAllowance() {
  MemoryFigures figures;
  if (!memoryFigures(figures)) return 0;
  const std::uint64_t limit = jobLimit();
  return limit == 0 ? figures.physicalTotal : std::min(figures.physicalTotal, limit);
}

std::size_t heapBlockSize(const void* block) {
  return block == nullptr ? 0 : _msize(const_cast<void*>(block));
}

}  // namespace platform
