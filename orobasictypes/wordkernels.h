// WordKernels: the loops over words of bits, for the bit vectors alone.
//
//   const WordKernels& kernels = wordKernels();
//   kernels.conjoin(mine, theirs, count);
//
// All work on `count` words of 32 bits at any address; results are the same on every processor.
// What they write may be what they read, at the same place. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/bitwords.h"
#include "orobasictypes/kelprocessor.h"

// Bits that were taken out of words and are still to be put together to words.
struct GatheredBits {
  uint64_t bits = 0;
  int32_t count = 0;  // below 32 between calls
};

// What is known of up to 1024 words, one bit for each line of 16: a line whose bits are all clear
// or all set may have it, any other has none.
struct WordOutline {
  static constexpr int32_t lineWords = 16;

  uint64_t empty = 0;
  uint64_t full = 0;
};

struct WordKernels {
  // a = a and b, a or b, a xor b, a without b.
  void (*conjoin)(uint32_t* a, const uint32_t* b, int64_t count);
  void (*unite)(uint32_t* a, const uint32_t* b, int64_t count);
  void (*differ)(uint32_t* a, const uint32_t* b, int64_t count);
  void (*subtract)(uint32_t* a, const uint32_t* b, int64_t count);
  void (*invert)(uint32_t* a, int64_t count);
  // Set bits.
  int64_t (*population)(const uint32_t* a, int64_t count);
  bool (*isAnyCommon)(const uint32_t* a, const uint32_t* b, int64_t count);
  // All that can be known. Requires: whole lines.
  WordOutline (*outline)(const uint32_t* a, int64_t count);
  // The first and the last word that is not `skipped`, which is 0 or all ones; `count` and -1 when
  // there is none.
  int64_t (*firstOther)(const uint32_t* a, int64_t count, uint32_t skipped);
  int64_t (*lastOther)(const uint32_t* a, int64_t count, uint32_t skipped);
  // One bit for each pair of words that is not 0, of 128 words at most. An odd last one is a pair.
  uint64_t (*usedPairs)(const uint32_t* a, int64_t count);
  // Appends the bits of `a` that `mask`, flipped by `flip`, has to those in `gathered`, and stores
  // what becomes whole words in `out`. Returns how many words that are, at most `count`.
  int64_t (*gather)(const uint32_t* a, const uint32_t* mask, uint32_t flip, int64_t count,
                    GatheredBits& gathered, uint32_t* out);
};

extern const WordKernels wordKernelTable[kKelProcessorLevels];

inline const WordKernels& wordKernels() { return wordKernelTable[kelProcessorLevel]; }

// The loop over long runs for an operation on two vectors.
constexpr auto kernelOf(bitwords::Conjoin) { return &WordKernels::conjoin; }
constexpr auto kernelOf(bitwords::Unite) { return &WordKernels::unite; }
constexpr auto kernelOf(bitwords::Differ) { return &WordKernels::differ; }
constexpr auto kernelOf(bitwords::Subtract) { return &WordKernels::subtract; }
