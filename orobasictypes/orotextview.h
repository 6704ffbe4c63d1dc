// Texts as views of their units, and strings from such views. Internal to the text classes.
#pragma once

#include <string_view>

#include "orobasictypes/orostring.h"
#include "orobasictypes/orounits.h"

namespace orotext {

// The units of a text up to its terminator; none for null.
inline std::u16string_view viewOf(const OroString& text) {
  const char16_t* const units = text.wideText();
  return {units, orounits::length(units)};
}

// A string of its own; an empty one shares the empty text.
inline OroString stringOf(std::u16string_view text) {
  if (text.empty()) return OroString::empty();
  return OroString(text.data(), static_cast<int>(text.size()));
}

}  // namespace orotext
