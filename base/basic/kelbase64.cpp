#include "base/basic/kelbase64.h"

#include <cstdint>

#include "orobasictypes/oronumbertext.h"

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr size_t kBytesOfLine = 48;

// Up to three bytes as four characters.
void appendGroup(std::string& text, const unsigned char* bytes, size_t count) {
  const uint32_t second = count > 1 ? bytes[1] : 0;
  const uint32_t third = count > 2 ? bytes[2] : 0;
  const uint32_t bits = uint32_t{bytes[0]} << 16 | second << 8 | third;
  text += kAlphabet[bits >> 18];
  text += kAlphabet[bits >> 12 & 63];
  text += count > 1 ? kAlphabet[bits >> 6 & 63] : '=';
  text += count > 2 ? kAlphabet[bits & 63] : '=';
}

// The six bits of a character, -1 for what is not in the alphabet.
int bitsOf(char16_t unit) {
  if (unit >= u'A' && unit <= u'Z') return unit - u'A';
  if (unit >= u'a' && unit <= u'z') return unit - u'a' + 26;
  if (unit >= u'0' && unit <= u'9') return unit - u'0' + 52;
  if (unit == u'+') return 62;
  return unit == u'/' ? 63 : -1;
}

}  // namespace

std::string kelBase64Encode(const void* data, size_t size) {
  const auto* const bytes = static_cast<const unsigned char*>(data);
  std::string text;
  text.reserve((size + 2) / 3 * 4 + size / kBytesOfLine);
  for (size_t at = 0; at < size; at += 3) {
    if (at > 0 && at % kBytesOfLine == 0) text += '\n';
    appendGroup(text, bytes + at, size - at < 3 ? size - at : 3);
  }
  return text;
}

std::string kelBase64Indent(const std::string& text, size_t depth) {
  if (text.find('\n') == std::string::npos) return text;
  const std::string lineStart = "\n" + std::string(depth + 1, '\t');
  std::string indented = lineStart;
  for (const char character : text) {
    if (character == '\n') {
      indented += lineStart;
    } else {
      indented += character;
    }
  }
  return indented + "\n" + std::string(depth, '\t');
}

std::vector<unsigned char> kelBase64Decode(std::u16string_view text) {
  std::vector<unsigned char> data;
  data.reserve(text.size() / 4 * 3);
  uint32_t pending = 0;
  int pendingBits = 0;
  for (const char16_t unit : text) {
    if (oronumbers::isBlank(unit)) continue;
    const int bits = bitsOf(unit);
    if (bits < 0) break;
    pending = (pending << 6 | static_cast<uint32_t>(bits)) & 0xFFFF;
    pendingBits += 6;
    if (pendingBits < 8) continue;
    pendingBits -= 8;
    data.push_back(static_cast<unsigned char>(pending >> pendingBits));
  }
  return data;
}
