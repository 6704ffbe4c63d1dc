// OroEvent: a gate for threads, shut at first. Once set it lets everybody through until it is
// reset.
//
// Any thread.
#pragma once

#include <algorithm>

#include "orobasictypes/keltruncate.h"
#include "platform/kernelobject.h"

class OroEvent {
 public:
  OroEvent() { handle_.makeManualResetEvent(); }

  void set() { handle_.setEvent(); }
  void reset() { handle_.resetEvent(); }
  // Without limit.
  void wait() { handle_.wait(); }
  bool tryWait() { return handle_.wait(0); }
  // True when it was set within so many seconds, of which parts of a millisecond are dropped; at
  // least one millisecond. Beyond some weeks it waits without limit.
  bool wait(double seconds) {
    constexpr double longest = 9e18;  // still a 64-bit integer
    return handle_.wait(std::max<int64_t>(kelTruncate(std::min(seconds * 1000, longest)), 1));
  }

 private:
  platform::KernelObject handle_;
};
