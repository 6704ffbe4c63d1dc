#include "components/xmldom/xmltext.h"

#include <cstdint>

#include "orobasictypes/orostring.h"

namespace {

bool isHigh(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLow(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// The bytes that a lead byte announces; 1 for one that leads nothing.
size_t announced(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 1;
}

// The character at the front and its bytes in `used`, which is 0 when there is none.
uint32_t decodeOne(std::string_view bytes, size_t& used) {
  constexpr uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const size_t size = announced(lead);
  used = 0;
  if (size == 1 || size > bytes.size()) return 0;
  uint32_t code = lead & (0x7Fu >> size);
  for (size_t i = 1; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if ((byte & 0xC0) != 0x80) return 0;
    code = code << 6 | (byte & 0x3Fu);
  }
  if (code < least[size] || code > 0x10FFFF) return 0;
  used = size;
  return code;
}

char16_t* decodeInto(std::string_view bytes, char16_t* out) {
  for (size_t i = 0; i < bytes.size();) {
    const char byte = bytes[i];
    if (byte >= 0) {
      *out++ = static_cast<char16_t>(byte);
      ++i;
      continue;
    }
    size_t used = 0;
    const uint32_t code = decodeOne(bytes.substr(i), used);
    if (used == 0) {
      *out++ = static_cast<char16_t>(static_cast<signed char>(byte));
      ++i;
      continue;
    }
    i += used;
    if (code < 0x10000) {
      *out++ = static_cast<char16_t>(code);
    } else {
      *out++ = static_cast<char16_t>(0xD7C0 + (code >> 10));
      *out++ = static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    }
  }
  return out;
}

bool isNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':';
}

}  // namespace

char* xmltext::encode(std::u16string_view units, char* out) {
  for (size_t i = 0; i < units.size(); ++i) {
    uint32_t code = units[i];
    if (code < 0x80) {
      *out++ = static_cast<char>(code);
      continue;
    }
    if (code < 0x800) {
      *out++ = static_cast<char>(0xC0 | code >> 6);
    } else {
      if (isHigh(units[i]) && i + 1 < units.size() && isLow(units[i + 1])) {
        code = 0x10000 + ((code & 0x3FF) << 10) + (units[++i] & 0x3FFu);
        *out++ = static_cast<char>(0xF0 | code >> 18);
        *out++ = static_cast<char>(0x80 | (code >> 12 & 0x3F));
      } else {
        *out++ = static_cast<char>(0xE0 | code >> 12);
      }
      *out++ = static_cast<char>(0x80 | (code >> 6 & 0x3F));
    }
    *out++ = static_cast<char>(0x80 | (code & 0x3F));
  }
  return out;
}

std::string xmltext::encode(const OroString& text) {
  const std::u16string_view units(text.wideText());
  std::string bytes(units.size() * kBytesPerUnit, '\0');
  bytes.resize(static_cast<size_t>(encode(units, bytes.data()) - bytes.data()));
  return bytes;
}

void xmltext::decode(std::string_view bytes, OroString& out) {
  constexpr size_t small = 256;
  if (bytes.empty()) {
    out = OroString::empty();
  } else if (bytes.size() <= small) {
    char16_t units[small];
    out.assign(units, static_cast<int>(decodeInto(bytes, units) - units));
  } else {
    std::u16string units(bytes.size(), u'\0');
    out.assign(units.data(), static_cast<int>(decodeInto(bytes, units.data()) - units.data()));
  }
}

bool xmltext::isName(const char* name) {
  if (name == nullptr || !isNameStart(*name)) return false;
  while (*++name != '\0') {
    const bool digit = *name >= '0' && *name <= '9';
    if (!isNameStart(*name) && !digit && *name != '.' && *name != '-') return false;
  }
  return true;
}
