// Exact printing of real numbers: the text that settings are stored with, so that a value survives
// being written and read back. Integers print as such; else the shortest text is taken that is as
// accurate as any longer one. Pure functions, any thread.
#pragma once

#include <string_view>

#include "orobasictypes/oronumbertext.h"

// Throw std::out_of_range for the largest doubles, which rounded to fewer digits are infinite.
std::string_view kelExactPrint(float value, oronumbers::Buffer& out);
std::string_view kelExactPrint(double value, oronumbers::Buffer& out);

// The number at the front of a text. Throw std::invalid_argument when there is none, and
// std::out_of_range when the value does not fit; values too small for full accuracy do fit.
float kelParseFloat(std::string_view text);
double kelParseDouble(std::string_view text);
