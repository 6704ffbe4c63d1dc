#include "components/points/formats/pointnotes.h"

#include <charconv>
#include <string>

// What a file says is shown to people: no control characters, and no more than a line of it.
OroString pointText(std::string_view text) {
  constexpr size_t kLongest = 300;
  std::string shown(text.substr(0, kLongest));
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
  }
  if (text.size() > kLongest) {
    while (!shown.empty() && (shown.back() & 0xC0) == 0x80) shown.pop_back();
    if (!shown.empty() && (shown.back() & 0x80) != 0) shown.pop_back();
    shown += "...";
  }
  OroString wide = OroString::fromUtf8(shown.c_str());
  if (!wide.isEmpty() || shown.empty()) return wide;
  for (char& c : shown) {
    if ((c & 0x80) != 0) c = '?';
  }
  return OroString(shown.c_str());
}

std::string pointFigure(double value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 3).ptr};
}
