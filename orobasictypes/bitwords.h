// Loops over words of bits that lie in one piece, inlined, for the bit vectors and their iterator:
// what is too short for a call through WordKernels, and the visit of set bits, where what the
// visitor adds up can stay in a register.
//
// Plain functions on the caller's memory. Any thread.
#pragma once

#include <immintrin.h>

#include <bit>
#include <cstdint>
#include <cstring>

#include "orobasictypes/kelprocessor.h"

namespace bitwords {

// The same number, of which the compiler knows nothing any more: what is worked out from it is
// worked out there, and as it is written.
[[gnu::always_inline]] inline uint32_t anew(uint32_t number) {
  asm("" : "+r"(number));
  return number;
}

// Sets bit `b`, counted modulo 32, and adds 1 to the count if it was clear; one more than the
// largest number becomes the smallest. No branch, and two instructions, which the compiler does not
// find: where many words come from afar, each one less lets the processor see farther ahead.
[[gnu::always_inline]] inline void setAndCount(uint32_t& word, uint32_t b, int32_t& count) {
  asm("btsl %2, %0\n\tsbbl $-1, %1" : "+r"(word), "+m"(count) : "r"(b) : "cc");
}

// ---------------------------------------------------------------------------------------------
// Operations on two vectors, with what every processor has

struct Conjoin {
  static __m128i wide(__m128i a, __m128i b) { return _mm_and_si128(a, b); }
  static constexpr uint32_t narrow(uint32_t a, uint32_t b) { return a & b; }
};
struct Unite {
  static __m128i wide(__m128i a, __m128i b) { return _mm_or_si128(a, b); }
  static constexpr uint32_t narrow(uint32_t a, uint32_t b) { return a | b; }
};
struct Differ {
  static __m128i wide(__m128i a, __m128i b) { return _mm_xor_si128(a, b); }
  static constexpr uint32_t narrow(uint32_t a, uint32_t b) { return a ^ b; }
};
struct Subtract {
  static __m128i wide(__m128i a, __m128i b) { return _mm_andnot_si128(b, a); }
  static constexpr uint32_t narrow(uint32_t a, uint32_t b) { return a & ~b; }
};

inline __m128i loadFour(const uint32_t* a) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
}
inline void storeFour(uint32_t* a, __m128i words) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(a), words);
}

// a = a operation b.
template <class Operation>
void combine(uint32_t* a, const uint32_t* b, int32_t count) {
  int32_t i = 0;
  for (; i + 8 <= count; i += 8) {
    storeFour(a + i, Operation::wide(loadFour(a + i), loadFour(b + i)));
    storeFour(a + i + 4, Operation::wide(loadFour(a + i + 4), loadFour(b + i + 4)));
  }
  for (; i < count; ++i) a[i] = Operation::narrow(a[i], b[i]);
}

// Whether that would change a word of a. Requires: `count` a multiple of 4.
template <class Operation>
bool changes(const uint32_t* a, const uint32_t* b, int32_t count) {
  __m128i changed = _mm_setzero_si128();
  for (int32_t i = 0; i < count; i += 4) {
    const __m128i words = loadFour(a + i);
    changed = _mm_or_si128(changed, _mm_xor_si128(words, Operation::wide(words, loadFour(b + i))));
  }
  return _mm_movemask_epi8(_mm_cmpeq_epi32(changed, _mm_setzero_si128())) != 0xFFFF;
}

inline void invert(uint32_t* a, int32_t count) {
  const __m128i ones = _mm_set1_epi32(-1);
  int32_t i = 0;
  for (; i + 4 <= count; i += 4) storeFour(a + i, _mm_xor_si128(loadFour(a + i), ones));
  for (; i < count; ++i) a[i] = ~a[i];
}

// ---------------------------------------------------------------------------------------------
// Set bits

// Two words as one; the second is 0 when there is none.
inline uint64_t pairAt(const uint32_t* a, bool hasSecond) {
  if (!hasSecond) return *a;
  uint64_t pair;
  std::memcpy(&pair, a, sizeof pair);
  return pair;
}

// One bit for each of 4 pairs that is 0, and for each of 16 that is not.
__attribute__((target("avx2"), always_inline)) inline unsigned clearPairsOfEight(
    const uint32_t* a) {
  const __m256i words = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a));
  const __m256i isZero = _mm256_cmpeq_epi64(words, _mm256_setzero_si256());
  return static_cast<unsigned>(_mm256_movemask_pd(_mm256_castsi256_pd(isZero)));
}
__attribute__((target("avx2"), always_inline)) inline unsigned usedPairsOf32(const uint32_t* a) {
  return 0xFFFF ^ (clearPairsOfEight(a) | clearPairsOfEight(a + 8) << 4 |
                   clearPairsOfEight(a + 16) << 8 | clearPairsOfEight(a + 24) << 12);
}

// The place of the lowest bit, without the question whether there is one. Requires: bits != 0.
[[gnu::always_inline]] inline int32_t lowestBit(uint64_t bits) {
  if (bits == 0) __builtin_unreachable();
  return std::countr_zero(bits);
}

// Requires: bits != 0.
template <class Visit>
[[gnu::always_inline]] inline void forEachInPair(uint64_t bits, int32_t base, Visit& visit) {
  // Where most bits are set, whole pairs are, and need not be taken apart.
  if (bits == UINT64_MAX) {
    for (int32_t i = 0; i < 64; ++i) visit(base + i);
    return;
  }
// Two to a turn, as a processor takes no two turns at once.
#pragma GCC unroll 2
  do {
    visit(base + lowestBit(bits));
    bits &= bits - 1;
  } while (bits != 0);
}

template <class Visit>
[[gnu::always_inline]] inline void forEachInRest(const uint32_t* words, int32_t i, int32_t count,
                                                 int32_t base, Visit& visit) {
  for (; i < count; i += 2) {
    const uint64_t bits = pairAt(words + i, i + 1 < count);
    if (bits != 0) forEachInPair(bits, base + i * 32, visit);
  }
}

template <class Visit>
void forEachSetPlain(const uint32_t* words, int32_t count, int32_t base, Visit& visit) {
  forEachInRest(words, 0, count, base, visit);
}

template <class Visit>
__attribute__((target("avx2,bmi"))) void forEachSetWide(const uint32_t* words, int32_t count,
                                                        int32_t base, Visit& visit) {
  int32_t i = 0;
  for (; i + 32 <= count; i += 32) {
    for (unsigned used = usedPairsOf32(words + i); used != 0; used &= used - 1) {
      const int32_t pair = i + std::countr_zero(used) * 2;
      forEachInPair(pairAt(words + pair, true), base + pair * 32, visit);
    }
  }
  forEachInRest(words, i, count, base, visit);
}

// Calls visit(base + i) for each set bit i of the words, upwards.
template <class Visit>
[[gnu::always_inline]] inline void forEachSet(const uint32_t* words, int32_t count, int32_t base,
                                              Visit& visit) {
  if (kelProcessorLevel >= kKelAvx2) {
    forEachSetWide(words, count, base, visit);
  } else {
    forEachSetPlain(words, count, base, visit);
  }
}

}  // namespace bitwords
