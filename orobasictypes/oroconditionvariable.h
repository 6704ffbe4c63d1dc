// OroConditionVariable: room for the condition variable of the system itself, for components that
// call the system. Everybody else takes OroCondition.
#pragma once

#include "platform/kernelobject.h"

class OroConditionVariable {
 public:
  OroConditionVariable() = default;  // ready for use

  // A CONDITION_VARIABLE on Windows, a pthread_cond_t on Linux.
  void* native() { return condition_.native(); }

 private:
  platform::NativeCondition condition_;
};
