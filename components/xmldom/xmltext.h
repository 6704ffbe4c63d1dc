// From the bytes of a document to the text of the system and back, and what XML says of names.
//
// Documents are UTF-8. A character above U+FFFF is four bytes there and two units here. Neither
// way loses anything: a unit that is half a pair becomes the three bytes of its own, and a byte
// that is no UTF-8 is widened with its sign, as narrow text is everywhere, so that its low byte is
// what the file held. Pure functions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class OroString;

namespace xmltext {

// The most bytes that a unit becomes.
constexpr size_t kBytesPerUnit = 3;

// Stores the units as UTF-8 and returns the end. Requires: room for kBytesPerUnit bytes each.
char* encode(std::u16string_view units, char* out);
std::string encode(const OroString& text);

void decode(std::string_view bytes, OroString& out);

// What a tag or an attribute may be called when it is made here: ASCII alone. Null is no name.
bool isName(const char* name);

}  // namespace xmltext
