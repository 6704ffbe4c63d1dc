// What memory there is: figures of the machine and of the process, in units of so many bytes.
//
//   const int64_t megabytes = kelMemoryAvailable(0.5, 1 << 20);
//
// They are taken from the memory checker while a component publishes one that is active, else from
// the system. A unit below 1 counts as 1; divisions truncate. Swap total is the smaller of the page
// file and what the address space holds beyond the physical memory; swap free is never above it.
// Any thread.
#pragma once

#include <cstdint>

// Stores the figures and returns 0; -1, with the figures as they were, when nobody tells.
int32_t kelMemoryStatus(int64_t& free, int64_t& total, int64_t& swapFree, int64_t& swapTotal,
                        int32_t unit);

// Free memory and so much of the free swap; -1 when nobody tells.
int64_t kelMemoryAvailable(double swapFraction, int32_t unit);

// Free physical memory; -1 when nobody tells.
int64_t kelPhysicalMemoryFree(int32_t unit);

// The physical memory that the address space has room for, and so much of the free page file. The
// system's figures alone; 1843200 bytes when it does not tell.
int64_t kelAddressableMemory(double swapFraction, int32_t unit);

// The unused part of the address space; 1843200 bytes when the system does not tell.
int64_t kelVirtualMemoryFree(int32_t unit);

// What this process uses: its physical memory, or its address space where that is not told.
int64_t kelProcessMemoryUsed(int32_t unit);

// The physical memory of this process, now and at most so far. False, with the figures as they
// were, when the system does not tell.
bool kelProcessWorkingSet(int64_t& current, int64_t& peak, int32_t unit);
bool kelProcessWorkingSet(int64_t& current, int32_t unit);

// The setting "Memory/MemLimit" in bytes, followed from the first of kelMemoryAvailable,
// kelPhysicalMemoryFree and this on; the larger of physical memory and address space when there was
// no settings store at that time. Nothing in the host acts on it.
int64_t kelMemoryLimit();
