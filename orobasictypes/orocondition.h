// OroCondition: threads wait, holding a mutex, until another one signals.
//
//   mutex.lock();
//   while (queue.isEmpty()) condition.wait(mutex);
//
// A signal that nobody waits for is lost. The mutex is an OroMutex, held once. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/oromutex.h"
#include "platform/kernelobject.h"
#include "platform/sync.h"

class OroCondition {
 public:
  OroCondition();
  OroCondition(const OroCondition&) = delete;
  OroCondition& operator=(const OroCondition&) = delete;

  // Leaves the mutex, waits for a signal, and holds the mutex again when it returns.
  void wait(OroMutex& mutex);
  // Lets one waiter go on, if there is one.
  void signal();
  // Lets all who wait now go on, and returns when they have stopped waiting.
  // Requires: the mutex is held, so that no waiter joins meanwhile.
  void broadcast();

  // How often a thread tries again before it sleeps: the environment variable ORO_SPIN_COUNT as it
  // stood at the first construction; below 0, also when it is not set, for not at all.
  static int32_t spinCount();

 private:
  class Guard;

  int32_t waiters_ = 0;
  platform::CriticalSection lock_;   // guards waiters_
  platform::KernelObject released_;  // a semaphore: one count for each waiter let go
  platform::KernelObject done_;      // an event: the last waiter of a broadcast has gone
  bool broadcasting_ = false;        // guarded by the callers' mutex
};
