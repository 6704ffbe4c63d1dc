#include "gui/apps/cowlinfo/infotext.h"

#include <cstdio>

#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "platform/text.h"

namespace {

OroString wide(const std::string& utf8) { return OroString(platform::fromSystem(utf8).c_str()); }

bool isControl(unsigned char byte) { return byte < 0x20 || byte == 0x7F; }

// The controls from U+0080 to U+009F are two bytes, C2 and the unit.
bool isWideControl(std::string_view text, size_t at) {
  if (static_cast<unsigned char>(text[at]) != 0xC2 || at + 1 >= text.size()) return false;
  return static_cast<unsigned char>(text[at + 1]) < 0xA0;
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

}  // namespace

std::string shownText(std::string_view utf8, size_t most) {
  const bool cut = most > 0 && utf8.size() > most;
  if (cut) {
    while (most > 0 && isContinuation(utf8[most])) --most;
    utf8 = utf8.substr(0, most);
  }
  std::string out;
  for (size_t at = 0; at < utf8.size(); ++at) {
    const auto byte = static_cast<unsigned char>(utf8[at]);
    const bool two = isWideControl(utf8, at);
    if (!isControl(byte) && !two) {
      out += utf8[at];
      continue;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02x",
                  two ? static_cast<unsigned char>(utf8[++at]) : byte);
    out += escape;
  }
  return cut ? out + "..." : out;
}

std::string shownText(const OroString& text, size_t most) {
  return shownText(platform::toUtf8Lossy(text.wideText()), most);
}

std::string counted(uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string infoText(const char* key, const std::string& a1, const std::string& a2,
                     const std::string& a3) {
  OroString text;
  oroTranslate(text, key, wide(a1), wide(a2), wide(a3));
  return platform::toUtf8Lossy(text.wideText());
}
