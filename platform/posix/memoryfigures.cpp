#include "platform/memoryfigures.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/posix/posixgate.h"
#include "platform/systempart.h"

namespace platform {
namespace {

constexpr std::uint64_t addressSpace = (std::uint64_t{1} << 47) - 131072;

// A file of the system's figures. Read without the heap, since it is asked when that has failed.
class FigureFile {
 public:
  explicit FigureFile(const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return;
    ssize_t got = 0;
    while (size_ + 1 < sizeof text_ &&
           (got = read(file, text_ + size_, sizeof text_ - 1 - size_)) > 0) {
      size_ += static_cast<std::size_t>(got);
    }
    close(file);
  }

  /// The number behind the label, told in kilobytes; false if there is none.
  bool kilobytes(const char* label, std::uint64_t& bytes) const {
    const char* const place = std::strstr(text_, label);
    if (place == nullptr) return false;
    char* end = nullptr;
    const std::uint64_t number = std::strtoull(place + std::strlen(label), &end, 10);
    if (end == place + std::strlen(label)) return false;
    bytes = number * 1024;
    return true;
  }
  /// The number that the file begins with; false for a word such as "max".
  bool number(std::uint64_t& value) const {
    char* end = nullptr;
    const std::uint64_t read = std::strtoull(text_, &end, 10);
    if (end == text_) return false;
    value = read;
    return true;
  }

 private:
  char text_[8192] = {};
  std::size_t size_ = 0;
};

std::uint64_t groupLimit() {
  std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
  if (!FigureFile("/sys/fs/cgroup/memory.max").number(limit)) {
    FigureFile("/sys/fs/cgroup/memory/memory.limit_in_bytes").number(limit);
  }
  return limit;
}

std::uint64_t processLimit(int which) {
  rlimit limit = {};
  if (getrlimit(which, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) {
    return std::numeric_limits<std::uint64_t>::max();
  }
  return limit.rlim_cur;
}

}  // namespace

bool systemMemoryFigures(MemoryFigures& figures) {
  const FigureFile memory("/proc/meminfo");
  std::uint64_t total = 0;
  std::uint64_t available = 0;
  std::uint64_t swapTotal = 0;
  std::uint64_t swapFree = 0;
  std::uint64_t pages = 0;
  if (!memory.kilobytes("MemTotal:", total) || !memory.kilobytes("MemAvailable:", available) ||
      !FigureFile("/proc/self/statm").number(pages)) {
    return false;
  }
  memory.kilobytes("SwapTotal:", swapTotal);
  memory.kilobytes("SwapFree:", swapFree);
  const std::uint64_t used = pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  figures.physicalTotal = total;
  figures.physicalAvailable = available;
  figures.pageFileTotal = total + swapTotal;
  figures.pageFileAvailable = available + swapFree;
  figures.virtualTotal = addressSpace;
  figures.virtualAvailable = addressSpace - std::min(addressSpace, used);
  figures.extendedAvailable = 0;
  return true;
}

bool systemWorkingSet(WorkingSet& figures) {
  const FigureFile status("/proc/self/status");
  WorkingSet read;
  if (!status.kilobytes("VmRSS:", read.current) || !status.kilobytes("VmHWM:", read.peak)) {
    return false;
  }
  figures = read;
  return true;
}

std::uint64_t memoryAllowance() {
  MemoryFigures figures;
  if (!memoryFigures(figures)) return 0;
  return std::min(
      {figures.physicalTotal, groupLimit(), processLimit(RLIMIT_AS), processLimit(RLIMIT_DATA)});
}

std::size_t heapBlockSize(const void* block) {
  return malloc_usable_size(const_cast<void*>(block));
}

}  // namespace platform
