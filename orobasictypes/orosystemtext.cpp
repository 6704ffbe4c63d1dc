#include "orobasictypes/orosystemtext.h"

#include "orobasictypes/oropath.h"
#include "platform/text.h"

OroString oroArgumentText(const OroString& argument) {
  std::string bytes;
  for (const char16_t* unit = argument.wideText(); *unit != 0; ++unit) {
    if (*unit >= 0x80 && *unit < 0xFF80) return argument;  // no widened text
    bytes.push_back(static_cast<char>(*unit & 0xFF));
  }
  return OroString(platform::fromCodePage(bytes).c_str());
}

OroString oroShownPath(const OroPath& path) {
  const std::string name = platform::toSystemPath(path.wideText());
  if (name.empty()) return path;  // it names nothing here, so it is shown as it stands
  return OroString(platform::fromSystem(name).c_str());
}

OroString oroWithReason(const OroString& message, const OroString& reason) {
  if (reason.isEmpty()) return message;
  OroString text(message);
  text.append(": ");
  text.append(reason);
  return text;
}

std::string oroTerminalText(const OroString& text) {
  std::u16string units(text.wideText());
  for (char16_t& unit : units) {
    const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    if (isControl && unit != u'\n' && unit != u'\t') unit = u'?';
  }
  return platform::toUtf8Lossy(units);
}
