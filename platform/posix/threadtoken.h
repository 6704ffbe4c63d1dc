#pragma once

// A number that is never 0 and differs between all threads alive: the thread's own pointer.
// One instruction, and the same in every module of the process.

#include <cstdint>

namespace platform {

inline std::uintptr_t threadToken() {
  return reinterpret_cast<std::uintptr_t>(__builtin_thread_pointer());
}

}  // namespace platform
