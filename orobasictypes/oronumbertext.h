// Numbers as text and text as numbers, for both string classes. The C language's forms, whatever
// the locale of the process, the same on both systems. Pure functions, any thread.
#pragma once

#include <cstdint>
#include <string_view>

namespace oronumbers {

// Room for every number that is printed here without a width.
using Buffer = char[344];

std::string_view printInt(long long value, Buffer& out);
std::string_view printUnsigned(unsigned long long value, Buffer& out);
std::string_view printFixed(double value, Buffer& out);       // "%f"
std::string_view printScientific(double value, Buffer& out);  // "%e"

enum class Parsed { noNumber, ok, outOfRange };

// The real number at the front of the text, after white space, as strtod reads it: also infinity,
// not-a-number and hexadecimal. Out of range: infinite although the text is finite, or zero
// although the text is not; `value` is that infinity or zero. Without a number it is 0.
Parsed parseReal(std::string_view text, float& value);
Parsed parseReal(std::string_view text, double& value);

// The integer at the front of the text, after white space, by the rule of "%i": 0x is hexadecimal,
// 0 octal. What does not fit 64 bits is the nearest that does; `value` is the low 32 bits.
bool parseInt(std::string_view text, int32_t& value);
// The same, always decimal.
bool parseDecimal(std::string_view text, int32_t& value);

// White space of the "C" locale: 9 to 13 and 32.
constexpr bool isBlank(uint32_t unit) { return unit == 32 || (unit >= 9 && unit <= 13); }

}  // namespace oronumbers
