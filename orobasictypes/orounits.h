// Bulk work on the storage of texts: measuring, widening, UTF-8 both ways. Internal to the string
// classes, which own the rules; here they are only made fast. All functions are pure; the buffers
// are the caller's and do not overlap.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orounits {

// Units up to the terminator. Requires: not null.
size_t length(const char16_t* text);
// The same, but looks at no more than `limit` units.
size_t length(const char16_t* text, size_t limit);

// Widens each byte with its sign. Requires: room for `count` units.
void widen(const char* bytes, size_t count, char16_t* out);

// Decodes `count` bytes; returns the units stored, or -1 for a text that is refused as a whole:
// a sequence of more than three bytes, one cut off by the end, or an overlong one. The top bits of
// continuation bytes are not looked at. Requires: room for `count` units.
ptrdiff_t decodeUtf8(const char* bytes, size_t count, char16_t* out);

// Encodes each unit by itself into one to three bytes; returns the bytes stored. Requires: room
// for 3 * count bytes.
size_t encodeUtf8(const char16_t* units, size_t count, char* out);

// Stores the units below 128 and drops the others; returns the bytes stored. Requires: room for
// `count` bytes.
size_t dropToAscii(const char16_t* units, size_t count, char* out);

}  // namespace orounits
