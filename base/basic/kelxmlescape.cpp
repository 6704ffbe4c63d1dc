#include "base/basic/kelxmlescape.h"

#include "orobasictypes/orounits.h"

namespace {

std::string_view entityOf(char32_t character) {
  switch (character) {
    case '"':
      return "&quot;";
    case '&':
      return "&amp;";
    case '\'':
      return "&apos;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    default:
      return {};
  }
}

void appendPlain(std::string& line, std::string_view bytes) { line += bytes; }

void appendPlain(std::string& line, std::u16string_view units) {
  constexpr size_t kMostBytesOfUnit = 3;
  const size_t before = line.size();
  line.resize(before + units.size() * kMostBytesOfUnit);
  line.resize(before + orounits::encodeUtf8(units.data(), units.size(), line.data() + before));
}

template <class Text>
void appendEscaped(std::string& line, Text text) {
  size_t scanned = text.size();  // how far the scan still goes
  size_t plain = 0;              // what goes out unchanged begins here
  for (size_t at = 0; at < scanned; ++at) {
    const std::string_view entity = entityOf(text[at]);
    if (entity.empty()) continue;
    appendPlain(line, text.substr(plain, at - plain));
    line += entity;
    plain = at + 1;
    const size_t hidden = entity.size() - 1;
    scanned = scanned > hidden ? scanned - hidden : 0;
  }
  appendPlain(line, text.substr(plain));
}

}  // namespace

void kelAppendEscaped(std::string& line, std::string_view bytes) { appendEscaped(line, bytes); }

void kelAppendEscaped(std::string& line, std::u16string_view units) { appendEscaped(line, units); }
