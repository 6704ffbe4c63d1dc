#pragma once

// Text at the border to the operating system: UTF-16 inside, bytes outside.
// Take these for file names, arguments, the environment and records; texts of the program use
// the string classes, whose conversions follow rules of their own.
// All functions are pure and may be called from any thread.

#include <string>
#include <string_view>

namespace platform {

/// UTF-16 to UTF-8. Surrogate pairs become four bytes; a lone unit DC80..DCFF becomes the raw
/// byte 80..FF again, so that what fromSystem made turns back; any other lone surrogate becomes
/// U+FFFD.
std::string toSystem(std::u16string_view text);

/// UTF-8 to UTF-16. A byte that belongs to no valid sequence (overlong forms, encoded surrogates
/// and values above 10FFFF included) becomes the lone unit DC00 + byte.
std::u16string fromSystem(std::string_view bytes);

/// A path in the "\" form as the system's calls take it. On Linux "\" becomes "/", and a text
/// that begins with a letter and ":" names nothing: the result is empty. So is that of a text
/// with a unit 0 inside.
std::string toSystemPath(std::u16string_view path);

/// A path of the system as UTF-16 in the "\" form.
std::u16string fromSystemPath(std::string_view path);

/// UTF-16 to valid UTF-8 for records that people and programs read: every lone surrogate
/// becomes U+FFFD.
std::string toUtf8Lossy(std::u16string_view text);

/// Narrow text of the system (the ANSI code page on Windows, UTF-8 on Linux) to UTF-16.
std::u16string fromCodePage(std::string_view text);

/// UTF-16 to narrow text of the system. On Windows what has no place in the code page becomes
/// the system's replacement character.
std::string toCodePage(std::u16string_view text);

}  // namespace platform
