// The hash of all names: seed 5381, times 33, plus each byte taken as signed, in 32 bits.
//
// It is what tables keyed by narrow text file their entries under, so the values are fixed. The
// bytes are taken eight at a time, with the result of taking them one by one. Any thread.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

constexpr uint32_t kelHashSeed = 5381;  // the hash of the empty text

namespace kelhash {

// 33 to the power of 0 to 8.
constexpr uint32_t powers[] = {1,        33,         1089,       35937,     1185921,
                               39135393, 1291467969, 3963737313, 1954312449};

// The share of eight bytes, the first of them lowest in `bytes`.
constexpr uint32_t block(uint64_t bytes) {
  // Signed bytes plus 128 are unsigned ones, which do not borrow from their neighbours.
  constexpr uint32_t bias = 128u * (powers[0] + powers[1] + powers[2] + powers[3] + powers[4] +
                                    powers[5] + powers[6] + powers[7]);
  constexpr uint64_t low8 = 0x00FF00FF00FF00FF;
  constexpr uint64_t low16 = 0x0000FFFF0000FFFF;
  bytes ^= 0x8080808080808080;
  const uint64_t pairs = (bytes & low8) * powers[1] + ((bytes >> 8) & low8);
  const uint64_t fours = (pairs & low16) * powers[2] + ((pairs >> 16) & low16);
  return static_cast<uint32_t>(fours) * powers[4] + static_cast<uint32_t>(fours >> 32) - bias;
}

template <class Word>
Word load(const char* bytes) {
  static_assert(std::endian::native == std::endian::little);
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// The last `count` (1 to 7) bytes before `end`, in the high bytes; zero in front adds nothing.
inline uint64_t tail(const char* end, size_t count) {
  uint64_t bytes = 0;
  if (count >= 4) {
    bytes = uint64_t{load<uint32_t>(end - count)} << (64 - 8 * count);
    return bytes | uint64_t{load<uint32_t>(end - 4)} << 32;
  }
  for (const char* at = end - count; at != end; ++at) {
    bytes = bytes >> 8 | uint64_t{static_cast<uint8_t>(*at)} << 56;
  }
  return bytes;
}

}  // namespace kelhash

// The hash of `length` bytes, going on from `hash`: parts in turn hash as the joined text.
inline uint32_t kelHashBytes(const char* text, size_t length, uint32_t hash = kelHashSeed) {
  const char* const end = text + length;
  for (; length >= 8; length -= 8, text += 8) {
    hash = hash * kelhash::powers[8] + kelhash::block(kelhash::load<uint64_t>(text));
  }
  if (length == 0) return hash;
  return hash * kelhash::powers[length] + kelhash::block(kelhash::tail(end, length));
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
