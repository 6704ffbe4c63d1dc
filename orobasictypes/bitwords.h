// The set bits of words that lie in one piece, for the bit vectors and their iterator.
//
// Zero words are skipped 64 at a time, with instructions that every processor has. Plain functions
// on the caller's memory; those with a visitor are inlined, so that what it adds up can stay in a
// register.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstdint>
#include <cstring>

namespace bitwords {

// One bit for each of the 16 words at `a` that is not 0.
inline uint64_t usedOf16(const uint32_t* a) {
  const auto isZero = [a](int i) {
    return _mm_cmpeq_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i)),
                           _mm_setzero_si128());
  };
  const __m128i low = _mm_packs_epi32(isZero(0), isZero(4));
  const __m128i high = _mm_packs_epi32(isZero(8), isZero(12));
  return static_cast<uint16_t>(~_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

// One bit for each pair of words, the lower one of its two, that is not 0; of the 64 at `a`, or of
// the first `count` of them.
inline uint64_t usedPairs(const uint32_t* a) {
  const uint64_t used =
      usedOf16(a) | usedOf16(a + 16) << 16 | usedOf16(a + 32) << 32 | usedOf16(a + 48) << 48;
  return (used | used >> 1) & 0x5555555555555555;
}
inline uint64_t usedPairs(const uint32_t* a, int32_t count) {
  uint64_t used = 0;
  int32_t i = 0;
  for (; i + 16 <= count; i += 16) used |= usedOf16(a + i) << i;
  for (; i < count; ++i) used |= uint64_t{a[i] != 0} << i;
  return (used | used >> 1) & 0x5555555555555555;
}

// Two words as one; the second is 0 when there is none.
inline uint64_t pairAt(const uint32_t* a, bool hasSecond) {
  if (!hasSecond) return *a;
  uint64_t pair;
  std::memcpy(&pair, a, sizeof pair);
  return pair;
}

template <class Visit>
[[gnu::always_inline]] inline void forEachPair(const uint32_t* words, int32_t count, uint64_t pairs,
                                               int32_t base, Visit& visit) {
  for (; pairs != 0; pairs &= pairs - 1) {
    const int32_t i = std::countr_zero(pairs);
    uint64_t bits = pairAt(words + i, i + 1 < count);
    for (; bits != 0; bits &= bits - 1) visit(base + i * 32 + std::countr_zero(bits));
  }
}

// Calls visit(base + i) for each set bit i of the words, upwards.
template <class Visit>
[[gnu::always_inline]] inline void forEachSet(const uint32_t* words, int32_t count, int32_t base,
                                              Visit& visit) {
  int32_t i = 0;
  for (; i + 64 <= count; i += 64) {
    forEachPair(words + i, 64, usedPairs(words + i), base + i * 32, visit);
  }
  const int32_t rest = count - i;
  if (rest > 0) forEachPair(words + i, rest, usedPairs(words + i, rest), base + i * 32, visit);
}

}  // namespace bitwords
