#pragma once

// What the system knows of the user's language: its tag, its order of words, and which characters
// are blanks, digits, small letters. Windows answers with its own national language support, Linux
// with ICU, which is why this is a library of its own ("nationaltext") that only the component
// `text` links. Texts end at a unit 0. Any thread.

#include <string>
#include <string_view>

namespace platform {

/// Below 0, 0, above 0 by the order of words in the user's language.
int compareNational(std::u16string_view left, std::u16string_view right);

bool isBlank(char16_t unit);
/// True for the decimal digits of all scripts.
bool isDigit(char16_t unit);

/// Each character by its own small or capital letter, where that is one character: the length
/// stays. The same for every language, so that names can be compared by it.
std::u16string smallLetters(std::u16string_view text);
std::u16string capitalLetters(std::u16string_view text);

/// Characters joined with their marks (form C). A text that is not well-formed may come back as it
/// is.
std::u16string composed(std::u16string_view text);

/// The user's language as a tag, "de-DE" or "zh-Hans-CN"; empty if the system does not tell.
std::string userLanguageTag();

}  // namespace platform
