#include "platform/sync.h"

#include <algorithm>

#include "platform/wordwait.h"

namespace platform {
namespace {

// The holder is normally a few instructions from the end of its section. Pauses that double let
// it and its neighbours do many sections undisturbed between two looks at the lock; a few
// microseconds in all.
constexpr int looks = 10;
constexpr int longestPause = 64;

// A holder that leaves while a thread goes to sleep may miss it: the two share no fence, which
// would cost every section. The next one who leaves wakes the sleeper, at the latest this time.
constexpr int longestSleep = 1;  // milliseconds

void pauseFor(int instructions) {
  for (; instructions > 0; --instructions) __builtin_ia32_pause();
}

}  // namespace

// Looks before it writes: a write would take the holder's memory away from it.
bool CountLock::tryEnter(std::uintptr_t self) {
  std::uintptr_t holder = 0;
  return owner_.load(std::memory_order_relaxed) == 0 &&
         owner_.compare_exchange_weak(holder, self, std::memory_order_acquire,
                                      std::memory_order_relaxed);
}

void CountLock::waitFor(std::uintptr_t self) {
  for (int look = 0, pause = 1; look < looks; ++look, pause = std::min(pause * 2, longestPause)) {
    if (tryEnter(self)) return;
    pauseFor(pause);
  }
  sleepFor(self);
}

// By now the holder has lost its processor, perhaps to this thread: yielding would only give the
// processor to any other one.
void CountLock::sleepFor(std::uintptr_t self) {
  do {
    sleepers_.exchange(1);
    if (owner_.load() != 0) waitWhile(sleepers_, 1, longestSleep);
  } while (!tryEnter(self));
  // More threads may sleep than the one that was woken: leaving wakes the next.
  sleepers_.store(1, std::memory_order_relaxed);
}

// Once for many sections: the woken thread says again that there are sleepers.
void CountLock::wake() {
  sleepers_.store(0, std::memory_order_relaxed);
  wakeOne(sleepers_);
}

}  // namespace platform
