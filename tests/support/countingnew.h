// Counts what operator new is asked for. The source that includes this replaces operator new and
// operator delete of its program, so one source of a program includes it, and the program loads no
// library that has been built with other ones.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace tests {
inline std::atomic<size_t> newCalls = 0;
}

// Not inlined: the compiler would see malloc meet delete and warn.
[[gnu::noinline]] void* operator new(size_t size) {
  ++tests::newCalls;
  if (void* const block = std::malloc(size)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(size_t size, const std::nothrow_t&) noexcept {
  ++tests::newCalls;
  return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, size_t) noexcept { std::free(block); }
