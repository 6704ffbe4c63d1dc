// The hash of all names: seed 5381, times 33, plus each byte taken as signed, in 32 bits.
//
// It is what tables keyed by narrow text file their entries under, so the values are fixed. The
// bytes are taken many at a time, with the result of taking them one by one. Any thread.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

constexpr uint32_t kelHashSeed = 5381;  // the hash of the empty text

namespace kelhash {

static_assert(std::endian::native == std::endian::little);

// powers.of[n] is 33 to the n.
struct Powers {
  uint32_t of[17] = {1};
  constexpr Powers() {
    for (int n = 1; n < 17; ++n) of[n] = of[n - 1] * 33;
  }
};
inline constexpr Powers powers;

template <class Word>
Word load(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// The share of eight bytes, the first of them lowest in `bytes`.
constexpr uint32_t eight(uint64_t bytes) {
  // Signed bytes plus 128 are unsigned ones, which do not borrow from their neighbours.
  constexpr uint32_t bias = 4 * (powers.of[8] - 1);  // 128 times the sum of the eight powers
  constexpr uint64_t low8 = 0x00FF00FF00FF00FF;
  constexpr uint64_t low16 = 0x0000FFFF0000FFFF;
  bytes ^= 0x8080808080808080;
  const uint64_t pairs = (bytes & low8) * 33 + ((bytes >> 8) & low8);
  const uint64_t fours = (pairs & low16) * 1089 + ((pairs >> 16) & low16);
  return static_cast<uint32_t>(fours) * powers.of[4] + static_cast<uint32_t>(fours >> 32) - bias;
}

// The share of sixteen bytes: pairs, fours, then all, each neighbour's share times its power.
inline uint32_t sixteen(__m128i bytes) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i timesPair = _mm_set1_epi32(33 | 1 << 16);
  const __m128i timesFour = _mm_set1_epi32(1089 | 1 << 16);
  const __m128i low = _mm_srai_epi16(_mm_unpacklo_epi8(zero, bytes), 8);
  const __m128i high = _mm_srai_epi16(_mm_unpackhi_epi8(zero, bytes), 8);
  const __m128i pairs =
      _mm_packs_epi32(_mm_madd_epi16(low, timesPair), _mm_madd_epi16(high, timesPair));
  const __m128i fours = _mm_madd_epi16(pairs, timesFour);
  const __m128i even = _mm_mul_epu32(fours, _mm_set_epi64x(powers.of[4], powers.of[12]));
  const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(fours, 32), _mm_set_epi64x(1, powers.of[8]));
  const __m128i halves = _mm_add_epi32(even, odd);
  return static_cast<uint32_t>(
      _mm_cvtsi128_si32(_mm_add_epi32(halves, _mm_unpackhi_epi64(halves, halves))));
}

// The `count` (1 to 8) bytes before `end` as the high bytes of a word; zero in front adds nothing.
inline uint64_t lastBytes(const char* end, size_t count) {
  if (count == 8) return load<uint64_t>(end - 8);
  if (count >= 4) {
    return uint64_t{load<uint32_t>(end - count)} << (64 - 8 * count) |
           uint64_t{load<uint32_t>(end - 4)} << 32;
  }
  uint64_t bytes = 0;
  for (const char* at = end - count; at != end; ++at) {
    bytes = bytes >> 8 | uint64_t{static_cast<uint8_t>(*at)} << 56;
  }
  return bytes;
}

// The share of the last 1 to 15 bytes before `end`.
inline uint32_t rest(const char* end, size_t count) {
  if (count <= 8) return eight(lastBytes(end, count));
  return eight(lastBytes(end - 8, count - 8)) * powers.of[8] + eight(load<uint64_t>(end - 8));
}

}  // namespace kelhash

// The hash of `length` bytes, going on from `hash`: parts in turn hash as the joined text.
inline uint32_t kelHashBytes(const char* text, size_t length, uint32_t hash = kelHashSeed) {
  const char* const end = text + length;
  for (; length >= 16; length -= 16, text += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    hash = hash * kelhash::powers.of[16] + kelhash::sixteen(bytes);
  }
  if (length == 0) return hash;
  return hash * kelhash::powers.of[length] + kelhash::rest(end, length);
}

// The hash of a text as a key: 0 for null, which is another key than "".
inline uint32_t kelHashText(const char* text) {
  return text == nullptr ? 0 : kelHashBytes(text, std::strlen(text));
}

// The hash of texts joined, without joining them; `list` ends in null. 0 for a null list.
inline uint32_t kelHashList(const char* const* list) {
  if (list == nullptr) return 0;
  uint32_t hash = kelHashSeed;
  for (; *list != nullptr; ++list) hash = kelHashBytes(*list, std::strlen(*list), hash);
  return hash;
}
