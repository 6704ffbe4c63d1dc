// Filling the numbered placeholders of a translated text from more arguments than "%1" to "%9".
//
// Code that makes texts calls oroTranslate; this is for translators.
#pragma once

#include <cstdint>

class OroString;

// What OroString::substitute reads: always ten slots, null where there is no argument.
struct OroPlaceholderArguments {
  const OroString* texts[10];
};

// Replaces "%1" to "%99" from `count` arguments, in number order, each at its first place in what
// the one before has left: "%1" is also found at the front of "%10", and arguments are scanned for
// higher numbers. Callers rely on it. A number that is not in the text is skipped;
// without an array all arguments are empty.
void oroFillNumbers(OroString& text, int32_t count, const OroString* arguments);
