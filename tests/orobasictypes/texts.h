// Texts of the tests: owned and borrowed ones, and what they hold in standard strings.
#pragma once

#include <string>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"

namespace tests {

inline OroString owned(const char16_t* text) { return OroString(text); }
inline OroString owned(const std::u16string& text) { return OroString(text.c_str()); }
// Borrows the literal and has no narrow form.
inline OroString borrowed(const char16_t* text) { return OroString(text, nullptr); }

inline std::u16string units(const OroString& text) { return text.wideText(); }
inline std::string bytes(const KelCString& text) { return text.c_str(); }

}  // namespace tests
