#include "orobasictypes/orounits.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>

namespace {

constexpr size_t unitsPerBlock = 8;   // 16-bit units in a register
constexpr size_t bytesPerBlock = 16;  // bytes in a register

__m128i loadBlock(const void* address) {
  return _mm_loadu_si128(static_cast<const __m128i*>(address));
}

void storeBlock(void* address, __m128i block) {
  _mm_storeu_si128(static_cast<__m128i*>(address), block);
}

void storeHalf(void* address, __m128i block) {
  _mm_storel_epi64(static_cast<__m128i*>(address), block);
}

// One bit for each byte that is above 127.
uint32_t highBytes(__m128i bytes) { return static_cast<uint32_t>(_mm_movemask_epi8(bytes)); }

// Two bits for each of the eight units that is below 128.
uint32_t asciiUnits(__m128i units) {
  const __m128i high = _mm_and_si128(units, _mm_set1_epi16(static_cast<int16_t>(0xFF80)));
  return highBytes(_mm_cmpeq_epi16(high, _mm_setzero_si128()));
}

__m128i loadHalf(const void* address) {
  return _mm_loadl_epi64(static_cast<const __m128i*>(address));
}

void storeWidened(char16_t* out, __m128i bytes, __m128i highs) {
  storeBlock(out, _mm_unpacklo_epi8(bytes, highs));
  storeBlock(out + unitsPerBlock, _mm_unpackhi_epi8(bytes, highs));
}

// One multi-byte sequence, as far as the rules of decodeUtf8 look at it. False: refused.
bool decodeSequence(const uint8_t*& in, const uint8_t* end, char16_t*& out) {
  const uint32_t lead = *in;
  if (lead < 0xC0) {  // a continuation byte by itself counts as seven bits
    *out++ = static_cast<char16_t>(lead & 0x7F);
    ++in;
    return true;
  }
  if (lead < 0xE0) {
    if (end - in < 2) return false;
    const uint32_t value = (lead & 0x1F) << 6 | (in[1] & 0x3F);
    *out++ = static_cast<char16_t>(value);
    in += 2;
    return value >= 0x80;
  }
  if (lead >= 0xF0 || end - in < 3) return false;
  const uint32_t value = (lead & 0x0F) << 12 | (in[1] & 0x3Fu) << 6 | (in[2] & 0x3Fu);
  *out++ = static_cast<char16_t>(value);
  in += 3;
  return value >= 0x800;
}

char* encodeUnit(uint32_t unit, char* out) {
  if (unit < 0x80) {
    *out++ = static_cast<char>(unit);
  } else if (unit < 0x800) {
    *out++ = static_cast<char>(0xC0 | unit >> 6);
    *out++ = static_cast<char>(0x80 | (unit & 0x3F));
  } else {
    *out++ = static_cast<char>(0xE0 | unit >> 12);
    *out++ = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
    *out++ = static_cast<char>(0x80 | (unit & 0x3F));
  }
  return out;
}

}  // namespace

namespace orounits {

size_t length(const char16_t* text) { return length(text, SIZE_MAX); }

// Aligned blocks never reach into another page, so a block may be read beyond the terminator and
// in front of the text; the sanitizers, which count single bytes, are told so.
__attribute__((no_sanitize("address", "thread"))) size_t length(const char16_t* text,
                                                                size_t limit) {
  if (limit == 0) return 0;
  const __m128i zero = _mm_setzero_si128();
  const uintptr_t address = reinterpret_cast<uintptr_t>(text);
  const uint32_t before = static_cast<uint32_t>(address % bytesPerBlock);
  auto block = reinterpret_cast<const __m128i*>(address - before);
  // Units from the start of the first block on that are within the limit.
  const size_t reach = std::min(limit, SIZE_MAX / 4) + before / sizeof(char16_t);
  uint32_t zeros = highBytes(_mm_cmpeq_epi16(_mm_load_si128(block), zero)) >> before << before;
  size_t seen = 0;
  while (zeros == 0) {
    seen += unitsPerBlock;
    if (seen >= reach) return limit;
    zeros = highBytes(_mm_cmpeq_epi16(_mm_load_si128(++block), zero));
  }
  const size_t end = seen + static_cast<size_t>(std::countr_zero(zeros)) / sizeof(char16_t);
  return std::min(end - before / sizeof(char16_t), limit);
}

void widen(const char* bytes, size_t count, char16_t* out) {
  size_t i = 0;
  for (; i + bytesPerBlock <= count; i += bytesPerBlock) {
    const __m128i block = loadBlock(bytes + i);
    storeWidened(out + i, block, _mm_cmplt_epi8(block, _mm_setzero_si128()));
  }
  for (; i < count; ++i) out[i] = static_cast<char16_t>(static_cast<signed char>(bytes[i]));
}

ptrdiff_t decodeUtf8(const char* bytes, size_t count, char16_t* out) {
  const char16_t* const first = out;
  auto in = reinterpret_cast<const uint8_t*>(bytes);
  const uint8_t* const end = in + count;
  while (in != end) {
    const bool whole = end - in >= static_cast<ptrdiff_t>(bytesPerBlock);
    if (whole || end - in >= static_cast<ptrdiff_t>(bytesPerBlock / 2)) {
      const __m128i block = whole ? loadBlock(in) : loadHalf(in);
      storeBlock(out, _mm_unpacklo_epi8(block, _mm_setzero_si128()));
      if (whole) storeBlock(out + unitsPerBlock, _mm_unpackhi_epi8(block, _mm_setzero_si128()));
      const uint32_t others = highBytes(block);
      if (others == 0) {  // a branch, so that the next block need not wait for a count
        in += whole ? bytesPerBlock : bytesPerBlock / 2;
        out += whole ? bytesPerBlock : bytesPerBlock / 2;
        continue;
      }
      in += std::countr_zero(others);
      out += std::countr_zero(others);
    } else if (*in < 0x80) {
      *out++ = *in++;
      continue;
    }
    // What is not ASCII mostly comes in runs, with single blanks between.
    do {
      if (!decodeSequence(in, end, out)) return -1;
      if (in != end && *in < 0x80) *out++ = *in++;
    } while (in != end && *in >= 0x80);
  }
  return out - first;
}

size_t encodeUtf8(const char16_t* units, size_t count, char* out) {
  const char* const first = out;
  const char16_t* const end = units + count;
  while (units != end) {
    const bool whole = end - units >= static_cast<ptrdiff_t>(2 * unitsPerBlock);
    if (!whole && end - units < static_cast<ptrdiff_t>(unitsPerBlock)) {
      out = encodeUnit(*units++, out);
      continue;
    }
    const __m128i low = loadBlock(units);
    const __m128i high = whole ? loadBlock(units + unitsPerBlock) : _mm_setzero_si128();
    const __m128i packed = _mm_packus_epi16(low, high);
    whole ? storeBlock(out, packed) : storeHalf(out, packed);
    if (asciiUnits(_mm_or_si128(low, high)) == 0xFFFF) {  // a branch, as in decodeUtf8
      units += whole ? 2 * unitsPerBlock : unitsPerBlock;
      out += whole ? 2 * unitsPerBlock : unitsPerBlock;
      continue;
    }
    // Where one unit is not ASCII others are near: the block is not worth taking apart.
    const char16_t* const stop = units + (whole ? 2 * unitsPerBlock : unitsPerBlock);
    do {
      out = encodeUnit(*units++, out);
    } while (units != stop);
  }
  return static_cast<size_t>(out - first);
}

size_t dropToAscii(const char16_t* units, size_t count, char* out) {
  const char* const first = out;
  size_t i = 0;
  for (; i + unitsPerBlock <= count; i += unitsPerBlock) {
    const __m128i block = loadBlock(units + i);
    if (asciiUnits(block) == 0xFFFF) {
      storeHalf(out, _mm_packus_epi16(block, block));
      out += unitsPerBlock;
      continue;
    }
    for (size_t k = i; k < i + unitsPerBlock; ++k) {
      if (units[k] < 0x80) *out++ = static_cast<char>(units[k]);
    }
  }
  for (; i < count; ++i) {
    if (units[i] < 0x80) *out++ = static_cast<char>(units[i]);
  }
  return static_cast<size_t>(out - first);
}

}  // namespace orounits
