#pragma once

// What the machine has of memory, and what this process uses of it, in bytes.
// Taken anew at each call. Any thread, while nobody sets the hooks.

#include <cstddef>
#include <cstdint>

namespace platform {

/// The page file counts with the physical memory, as the system's own figures do.
struct MemoryFigures {
  std::uint64_t physicalTotal = 0;
  std::uint64_t physicalAvailable = 0;
  std::uint64_t pageFileTotal = 0;
  std::uint64_t pageFileAvailable = 0;
  std::uint64_t virtualTotal = 0;      ///< of this process
  std::uint64_t virtualAvailable = 0;  ///< the part that is not in use
  std::uint64_t extendedAvailable = 0;
};

/// False, with the figures as they were, if the system does not tell.
bool memoryFigures(MemoryFigures& figures);

/// What of the process is in physical memory, now and at most so far.
struct WorkingSet {
  std::uint64_t current = 0;
  std::uint64_t peak = 0;
};

/// False, with the figures as they were, if the system does not tell.
bool workingSet(WorkingSet& figures);

/// What the process may have at most: the physical memory, or less where a limit was set on the
/// process or its group. 0 if the system does not tell.
std::uint64_t memoryAllowance();

/// The size of a block of malloc as the heap has it, at least what was asked for; 0 for null.
std::size_t heapBlockSize(const void* block);

/// Replace the answers of the system.
extern bool (*memoryFiguresHook)(MemoryFigures& figures);
extern bool (*workingSetHook)(WorkingSet& figures);

}  // namespace platform
