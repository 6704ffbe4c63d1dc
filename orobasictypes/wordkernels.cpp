#include "orobasictypes/wordkernels.h"

#include <immintrin.h>

#include <bit>
#include <cstring>

#include "orobasictypes/bitwords.h"

namespace {

// ---------------------------------------------------------------------------------------------
// Two words at a time, with what every processor has. Also what is left of the wide loops.

template <class Word>
Word load(const uint32_t* a) {
  Word word;
  std::memcpy(&word, a, sizeof word);
  return word;
}

template <class Word>
void store(uint32_t* a, Word word) {
  std::memcpy(a, &word, sizeof word);
}

struct And {
  template <class Word>
  static Word narrow(Word a, Word b) {
    return a & b;
  }
  __attribute__((target("avx2"), always_inline)) static inline __m256i wide(__m256i a, __m256i b) {
    return _mm256_and_si256(a, b);
  }
};

struct Or {
  template <class Word>
  static Word narrow(Word a, Word b) {
    return a | b;
  }
  __attribute__((target("avx2"), always_inline)) static inline __m256i wide(__m256i a, __m256i b) {
    return _mm256_or_si256(a, b);
  }
};

struct Xor {
  template <class Word>
  static Word narrow(Word a, Word b) {
    return a ^ b;
  }
  __attribute__((target("avx2"), always_inline)) static inline __m256i wide(__m256i a, __m256i b) {
    return _mm256_xor_si256(a, b);
  }
};

struct Minus {
  template <class Word>
  static Word narrow(Word a, Word b) {
    return a & ~b;
  }
  __attribute__((target("avx2"), always_inline)) static inline __m256i wide(__m256i a, __m256i b) {
    return _mm256_andnot_si256(b, a);
  }
};

template <class Op>
void combine(uint32_t* a, const uint32_t* b, int64_t count) {
  int64_t i = 0;
  for (; i + 2 <= count; i += 2) {
    store(a + i, Op::narrow(load<uint64_t>(a + i), load<uint64_t>(b + i)));
  }
  if (i < count) a[i] = Op::narrow(a[i], b[i]);
}

void invert(uint32_t* a, int64_t count) {
  int64_t i = 0;
  for (; i + 2 <= count; i += 2) store(a + i, ~load<uint64_t>(a + i));
  if (i < count) a[i] = ~a[i];
}

int64_t population(const uint32_t* a, int64_t count) {
  int64_t sum = 0;
  int64_t i = 0;
  for (; i + 2 <= count; i += 2) sum += std::popcount(load<uint64_t>(a + i));
  return i < count ? sum + std::popcount(a[i]) : sum;
}

bool isAnyCommon(const uint32_t* a, const uint32_t* b, int64_t count) {
  for (int64_t i = 0; i < count; ++i) {
    if ((a[i] & b[i]) != 0) return true;
  }
  return false;
}

WordOutline outline(const uint32_t* a, int64_t count) {
  WordOutline result;
  for (int64_t i = 0; i < count; i += WordOutline::lineWords) {
    uint64_t any = 0;
    uint64_t all = UINT64_MAX;
    for (int64_t k = i; k < i + WordOutline::lineWords; k += 2) {
      any |= load<uint64_t>(a + k);
      all &= load<uint64_t>(a + k);
    }
    const int64_t line = i / WordOutline::lineWords;
    result.empty |= uint64_t{any == 0} << line;
    result.full |= uint64_t{all == UINT64_MAX} << line;
  }
  return result;
}

int64_t firstOther(const uint32_t* a, int64_t count, uint32_t skipped) {
  int64_t i = 0;
  while (i < count && a[i] == skipped) ++i;
  return i;
}

int64_t lastOther(const uint32_t* a, int64_t count, uint32_t skipped) {
  int64_t i = count - 1;
  while (i >= 0 && a[i] == skipped) --i;
  return i;
}

uint64_t usedPairs(const uint32_t* a, int64_t count) {
  uint64_t used = 0;
  for (int64_t i = 0; i < count; i += 2) {
    used |= uint64_t{bitwords::pairAt(a + i, i + 1 < count) != 0} << (i / 2);
  }
  return used;
}

// Appends `bits`, of which there are `count`; whether a word became whole.
inline bool append(GatheredBits& gathered, uint64_t bits, int32_t count, uint32_t*& out) {
  gathered.bits |= bits << gathered.count;
  gathered.count += count;
  if (gathered.count < 32) return false;
  *out++ = static_cast<uint32_t>(gathered.bits);
  gathered.bits >>= 32;
  gathered.count -= 32;
  return true;
}

// The bits of a word that the mask has, moved together to its low end: in five rounds, of which
// each moves by a power of two those that have an odd number of such steps to go.
uint32_t extract(uint32_t word, uint32_t mask) {
  word &= mask;
  uint32_t toRight = ~mask << 1;  // for each place, whether the one below it is left out
  for (int shift = 1; shift < 32; shift *= 2) {
    uint32_t parity = toRight;
    for (int i = 1; i < 32; i *= 2) parity ^= parity << i;
    const uint32_t moved = parity & mask;
    mask = (mask ^ moved) | moved >> shift;
    const uint32_t bits = word & moved;
    word = (word ^ bits) | bits >> shift;
    toRight &= ~parity;
  }
  return word;
}

int64_t gather(const uint32_t* a, const uint32_t* mask, uint32_t flip, int64_t count,
               GatheredBits& gathered, uint32_t* out) {
  uint32_t* const start = out;
  for (int64_t i = 0; i < count; ++i) {
    const uint32_t chosen = mask[i] ^ flip;
    if (chosen == 0) continue;
    const uint32_t bits = chosen == UINT32_MAX ? a[i] : extract(a[i], chosen);
    append(gathered, bits, std::popcount(chosen), out);
  }
  return out - start;
}

// ---------------------------------------------------------------------------------------------
// AVX2: 128 bytes a step.

constexpr int64_t perVector = 8;  // words
constexpr int64_t perStep = 4 * perVector;

__attribute__((target("avx2"), always_inline)) inline __m256i loadWide(const uint32_t* a) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a));
}

__attribute__((target("avx2"), always_inline)) inline void storeWide(uint32_t* a, __m256i words) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(a), words);
}

template <class Op>
__attribute__((target("avx2"))) void combineWide(uint32_t* a, const uint32_t* b, int64_t count) {
  int64_t i = 0;
  for (; i + perStep <= count; i += perStep) {
    const __m256i first = Op::wide(loadWide(a + i), loadWide(b + i));
    const __m256i second = Op::wide(loadWide(a + i + 8), loadWide(b + i + 8));
    const __m256i third = Op::wide(loadWide(a + i + 16), loadWide(b + i + 16));
    const __m256i fourth = Op::wide(loadWide(a + i + 24), loadWide(b + i + 24));
    storeWide(a + i, first);
    storeWide(a + i + 8, second);
    storeWide(a + i + 16, third);
    storeWide(a + i + 24, fourth);
  }
  for (; i + perVector <= count; i += perVector) {
    storeWide(a + i, Op::wide(loadWide(a + i), loadWide(b + i)));
  }
  for (; i < count; ++i) a[i] = Op::narrow(a[i], b[i]);
}

__attribute__((target("avx2"))) void invertWide(uint32_t* a, int64_t count) {
  const __m256i ones = _mm256_set1_epi32(-1);
  int64_t i = 0;
  for (; i + perStep <= count; i += perStep) {
    storeWide(a + i, _mm256_xor_si256(loadWide(a + i), ones));
    storeWide(a + i + 8, _mm256_xor_si256(loadWide(a + i + 8), ones));
    storeWide(a + i + 16, _mm256_xor_si256(loadWide(a + i + 16), ones));
    storeWide(a + i + 24, _mm256_xor_si256(loadWide(a + i + 24), ones));
  }
  for (; i + perVector <= count; i += perVector) {
    storeWide(a + i, _mm256_xor_si256(loadWide(a + i), ones));
  }
  for (; i < count; ++i) a[i] = ~a[i];
}

// Adds three bits of each place: `sum` keeps the low bit, the result is the carry.
__attribute__((target("avx2"), always_inline)) inline __m256i addCarry(__m256i& sum, __m256i b,
                                                                       __m256i c) {
  const __m256i half = _mm256_xor_si256(sum, b);
  const __m256i carry = _mm256_or_si256(_mm256_and_si256(sum, b), _mm256_and_si256(half, c));
  sum = _mm256_xor_si256(half, c);
  return carry;
}

// The set bits of each 64 bits, by a table of nibbles.
__attribute__((target("avx2"), always_inline)) inline __m256i populationOf(__m256i words) {
  const __m256i table = _mm256_setr_epi8(0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4,  //
                                         0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4);
  const __m256i nibble = _mm256_set1_epi8(15);
  const __m256i low = _mm256_and_si256(words, nibble);
  const __m256i high = _mm256_and_si256(_mm256_srli_epi16(words, 4), nibble);
  const __m256i bytes =
      _mm256_add_epi8(_mm256_shuffle_epi8(table, low), _mm256_shuffle_epi8(table, high));
  return _mm256_sad_epu8(bytes, _mm256_setzero_si256());
}

__attribute__((target("avx2"), always_inline)) inline int64_t sumOf(__m256i sums) {
  const __m128i halves =
      _mm_add_epi64(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
  return _mm_cvtsi128_si64(halves) + _mm_extract_epi64(halves, 1);
}

__attribute__((target("popcnt"))) int64_t populationPopcnt(const uint32_t* a, int64_t count) {
  int64_t sum = 0;
  int64_t i = 0;
  for (; i + 2 <= count; i += 2) sum += __builtin_popcountll(load<uint64_t>(a + i));
  return i < count ? sum + __builtin_popcount(a[i]) : sum;
}

// Carry-save adders make one count of eight vectors.
__attribute__((target("avx2,popcnt"))) int64_t populationWide(const uint32_t* a, int64_t count) {
  constexpr int64_t perRound = 8 * perVector;
  __m256i ones = _mm256_setzero_si256();
  __m256i twos = ones;
  __m256i fours = ones;
  __m256i total = ones;
  int64_t i = 0;
  for (; i + perRound <= count; i += perRound) {
    const __m256i twosA = addCarry(ones, loadWide(a + i), loadWide(a + i + 8));
    const __m256i twosB = addCarry(ones, loadWide(a + i + 16), loadWide(a + i + 24));
    const __m256i foursA = addCarry(twos, twosA, twosB);
    const __m256i twosC = addCarry(ones, loadWide(a + i + 32), loadWide(a + i + 40));
    const __m256i twosD = addCarry(ones, loadWide(a + i + 48), loadWide(a + i + 56));
    const __m256i foursB = addCarry(twos, twosC, twosD);
    const __m256i eights = addCarry(fours, foursA, foursB);
    total = _mm256_add_epi64(total, populationOf(eights));
  }
  const int64_t sum = sumOf(total) * 8 + sumOf(populationOf(fours)) * 4 +
                      sumOf(populationOf(twos)) * 2 + sumOf(populationOf(ones));
  return sum + populationPopcnt(a + i, count - i);
}

__attribute__((target("avx512f,avx512bw,avx512vl,avx512vpopcntdq,popcnt"))) int64_t
populationVector(const uint32_t* a, int64_t count) {
  __m256i first = _mm256_setzero_si256();
  __m256i second = first;
  int64_t i = 0;
  for (; i + perStep <= count; i += perStep) {
    first = _mm256_add_epi64(
        first, _mm256_popcnt_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i))));
    second = _mm256_add_epi64(
        second,
        _mm256_popcnt_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i + 8))));
    first = _mm256_add_epi64(
        first,
        _mm256_popcnt_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i + 16))));
    second = _mm256_add_epi64(
        second,
        _mm256_popcnt_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i + 24))));
  }
  const __m256i both = _mm256_add_epi64(first, second);
  const __m128i halves =
      _mm_add_epi64(_mm256_castsi256_si128(both), _mm256_extracti128_si256(both, 1));
  const int64_t sum = _mm_cvtsi128_si64(halves) + _mm_extract_epi64(halves, 1);
  return sum + populationPopcnt(a + i, count - i);
}

__attribute__((target("avx2"))) bool isAnyCommonWide(const uint32_t* a, const uint32_t* b,
                                                     int64_t count) {
  int64_t i = 0;
  for (; i + 2 * perVector <= count; i += 2 * perVector) {
    const __m256i first = _mm256_and_si256(loadWide(a + i), loadWide(b + i));
    const __m256i second = _mm256_and_si256(loadWide(a + i + 8), loadWide(b + i + 8));
    const __m256i either = _mm256_or_si256(first, second);
    if (!_mm256_testz_si256(either, either)) return true;
  }
  return isAnyCommon(a + i, b + i, count - i);
}

__attribute__((target("avx2"))) WordOutline outlineWide(const uint32_t* a, int64_t count) {
  static_assert(WordOutline::lineWords == 2 * perVector);
  const __m256i ones = _mm256_set1_epi32(-1);
  WordOutline result;
  for (int64_t i = 0; i < count; i += 2 * perVector) {
    const __m256i first = loadWide(a + i);
    const __m256i second = loadWide(a + i + perVector);
    const __m256i any = _mm256_or_si256(first, second);
    const auto isEmpty = static_cast<uint64_t>(_mm256_testz_si256(any, any));
    const auto isFull =
        static_cast<uint64_t>(_mm256_testc_si256(_mm256_and_si256(first, second), ones));
    const int64_t line = i / WordOutline::lineWords;
    result.empty |= isEmpty << line;
    result.full |= isFull << line;
  }
  return result;
}

// One bit for each of 8 words that is `skipped`.
__attribute__((target("avx2"), always_inline)) inline uint64_t skippedOf(const uint32_t* a,
                                                                         __m256i skipped) {
  const __m256i equal = _mm256_cmpeq_epi32(loadWide(a), skipped);
  return static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(equal)));
}

__attribute__((target("avx2"))) int64_t firstOtherWide(const uint32_t* a, int64_t count,
                                                       uint32_t skipped) {
  const __m256i pattern = _mm256_set1_epi32(static_cast<int>(skipped));
  int64_t i = 0;
  // In large steps: where what is looked for lies in one is nobody's guess, but not in which one.
  constexpr int64_t perMask = 64;
  for (; i + perMask <= count; i += perMask) {
    uint64_t mask = 0;
#pragma GCC unroll 8
    for (int64_t k = 0; k < perMask; k += perVector) mask |= skippedOf(a + i + k, pattern) << k;
    if (mask != UINT64_MAX) return i + std::countr_one(mask);
  }
  for (; i + perVector <= count; i += perVector) {
    const uint64_t mask = skippedOf(a + i, pattern);
    if (mask != 0xFF) return i + std::countr_one(mask);
  }
  return i + firstOther(a + i, count - i, skipped);
}

__attribute__((target("avx2"))) int64_t lastOtherWide(const uint32_t* a, int64_t count,
                                                      uint32_t skipped) {
  const __m256i pattern = _mm256_set1_epi32(static_cast<int>(skipped));
  int64_t i = count;
  for (; i >= perVector; i -= perVector) {
    const auto mask = static_cast<uint8_t>(skippedOf(a + i - perVector, pattern));
    if (mask != 0xFF) return i - 1 - std::countl_one(mask);
  }
  return lastOther(a, i, skipped);
}

__attribute__((target("avx2"))) uint64_t usedPairsWide(const uint32_t* a, int64_t count) {
  uint64_t used = 0;
  int64_t i = 0;
  for (; i + 32 <= count; i += 32) used |= uint64_t{bitwords::usedPairsOf32(a + i)} << (i / 2);
  return i < count ? used | usedPairs(a + i, count - i) << (i / 2) : used;
}

__attribute__((target("bmi2,popcnt"))) int64_t gatherPext(const uint32_t* a, const uint32_t* mask,
                                                          uint32_t flip, int64_t count,
                                                          GatheredBits& gathered, uint32_t* out) {
  uint32_t* const start = out;
  uint64_t bits = gathered.bits;
  int32_t filled = gathered.count;
  for (int64_t i = 0; i < count; ++i) {
    const uint32_t chosen = mask[i] ^ flip;
    bits |= uint64_t{_pext_u32(a[i], chosen)} << filled;
    filled += __builtin_popcount(chosen);
    // Always stored: a word that is not whole yet is stored over by the next.
    *out = static_cast<uint32_t>(bits);
    const int32_t isWhole = filled >> 5;
    out += isWhole;
    bits >>= isWhole * 32;
    filled &= 31;
  }
  gathered.bits = bits;
  gathered.count = filled;
  return out - start;
}

constexpr WordKernels baselineKernels = {
    combine<And>, combine<Or>, combine<Xor>, combine<Minus>, invert,    population,
    isAnyCommon,  outline,     firstOther,   lastOther,      usedPairs, gather,
};

using Population = int64_t (*)(const uint32_t*, int64_t);
using Gather = int64_t (*)(const uint32_t*, const uint32_t*, uint32_t, int64_t, GatheredBits&,
                           uint32_t*);

constexpr WordKernels wideKernels(Population population, Gather gather) {
  return {
      combineWide<And>, combineWide<Or>, combineWide<Xor>, combineWide<Minus>,
      invertWide,       population,      isAnyCommonWide,  outlineWide,
      firstOtherWide,   lastOtherWide,   usedPairsWide,    gather,
  };
}

}  // namespace

constinit const WordKernels wordKernelTable[kKelProcessorLevels] = {
    baselineKernels, wideKernels(populationWide, gather), wideKernels(populationWide, gatherPext),
    wideKernels(populationVector, gatherPext)};
