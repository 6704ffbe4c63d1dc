#pragma once

// Sleeping until a word changes, for locks that are one word of memory. Whoever changes the word
// wakes a sleeper itself. Any thread; the word outlives both calls.

#include <atomic>
#include <cstdint>

namespace platform {

/// Sleeps while `word` holds `value`, until wakeOne is called for it, and at most `milliseconds`.
/// May return early, so look at the word again.
void waitWhile(const std::atomic<std::uint32_t>& word, std::uint32_t value, int milliseconds);

/// Wakes one of the threads that sleep on `word`, if there is one. Changes nothing in it.
void wakeOne(const std::atomic<std::uint32_t>& word);

}  // namespace platform
