#include "platform/sync.h"

#include <chrono>
#include <thread>

namespace platform {
namespace {

// The holder is normally a few instructions from the end of its section. If it is still there
// after the spins it has lost its processor: give it this one, and at last the time to get one.
constexpr int spinRounds = 100;
constexpr int yieldRounds = 50;
constexpr std::chrono::microseconds pauseTime{100};

void backOff(int round) {
  if (round < spinRounds) {
    __builtin_ia32_pause();
  } else if (round < spinRounds + yieldRounds) {
    std::this_thread::yield();
  } else {
    std::this_thread::sleep_for(pauseTime);
  }
}

}  // namespace

void CountLock::waitFor(std::uintptr_t self) {
  for (int round = 0;; round += round < spinRounds + yieldRounds) {
    std::uintptr_t holder = 0;
    if (owner_.load(std::memory_order_relaxed) == 0 &&
        owner_.compare_exchange_weak(holder, self, std::memory_order_acquire,
                                     std::memory_order_relaxed)) {
      return;
    }
    backOff(round);
  }
}

}  // namespace platform
