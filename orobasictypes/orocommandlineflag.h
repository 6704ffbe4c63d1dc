// The process-wide mark of a batch run: there is no user interface, and nobody to ask.
//
// The command-line flow sets it at its start and nothing clears it; code that would complain to a
// user looks at it. Each module has its own copy; the host's is the one that counts. Written on the
// main thread before others read it.
#pragma once

#include <cstdint>

// 1 in a batch run, else 0.
inline uint8_t& oroCommandLineFlag() {
  static uint8_t flag = 0;
  return flag;
}
