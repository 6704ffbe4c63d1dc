#include "platform/text.h"

#include <cstddef>
#include <cstdint>

namespace platform {
namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool isEscapedByte(char32_t unit) { return unit >= 0xDC80 && unit <= 0xDCFF; }

void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | c >> 12);
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | c >> 18);
    out += static_cast<char>(0x80 | (c >> 12 & 0x3F));
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

std::string toUtf8(std::u16string_view text, bool unescapeBytes) {
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (isHighSurrogate(c) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (unescapeBytes && isEscapedByte(c)) {
      out += static_cast<char>(c - 0xDC00);
      continue;
    } else if (isHighSurrogate(c) || isLowSurrogate(c)) {
      c = replacementCharacter;
    }
    appendUtf8(out, c);
  }
  return out;
}

struct Decoded {
  char32_t value;      // the code point
  std::size_t length;  // its bytes, 0 if there is no valid sequence
};

Decoded decodeUtf8(std::string_view bytes) {
  const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  const std::uint8_t lead = byteAt(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead < 0xC0   ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF8 ? 4
                                           : 0;
  if (length == 0 || length > bytes.size()) return {0, 0};
  char32_t value = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return {0, 0};
    value = value << 6 | (byteAt(i) & 0x3F);
  }
  constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < smallest[length] || surrogate || value > 0x10FFFF) return {0, 0};
  return {value, length};
}

}  // namespace

std::string toSystem(std::u16string_view text) { return toUtf8(text, true); }

std::string toUtf8Lossy(std::u16string_view text) { return toUtf8(text, false); }

std::u16string fromSystem(std::string_view bytes) {
  std::u16string out;
  out.reserve(bytes.size());
  while (!bytes.empty()) {
    const auto [value, length] = decodeUtf8(bytes);
    if (length == 0) {
      out += static_cast<char16_t>(0xDC00 + static_cast<std::uint8_t>(bytes[0]));
      bytes.remove_prefix(1);
      continue;
    }
    if (value < 0x10000) {
      out += static_cast<char16_t>(value);
    } else {
      out += static_cast<char16_t>(0xD7C0 + (value >> 10));
      out += static_cast<char16_t>(0xDC00 + (value & 0x3FF));
    }
    bytes.remove_prefix(length);
  }
  return out;
}

}  // namespace platform
