// Escapes texts for a line of the settings journal. Pure functions, any thread.
//
// The text is scanned only as far as it was long before its first replacement, counting what was
// put in: behind a replacement by n characters the last n - 1 characters of the text are not looked
// at, and go out as they are. Kept, since the lines of the journal are compared as texts.
#pragma once

#include <string>
#include <string_view>

// Bytes, which go out as they stand.
void kelAppendEscaped(std::string& line, std::string_view bytes);

// Units, which go out as UTF-8, each by itself.
void kelAppendEscaped(std::string& line, std::u16string_view units);
