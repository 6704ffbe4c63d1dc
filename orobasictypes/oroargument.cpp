#include "orobasictypes/oroargument.h"

#include <string>

#include "platform/text.h"

OroString oroArgumentText(const OroString& argument) {
  std::string bytes;
  for (const char16_t* unit = argument.wideText(); *unit != 0; ++unit) {
    if (*unit >= 0x80 && *unit < 0xFF80) return argument;  // no widened text
    bytes.push_back(static_cast<char>(*unit & 0xFF));
  }
  return OroString(platform::fromCodePage(bytes).c_str());
}
