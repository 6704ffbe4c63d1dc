// Lines of point files as words with blanks and tabs between, and words as numbers.
//
//   while (!(word = pointTakeWord(line)).empty()) use(word);
//
// Any thread.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

// Takes the first word off the line; empty where there is none.
std::string_view pointTakeWord(std::string_view& line);
std::vector<std::string_view> pointWordsOf(std::string_view line);
bool pointIsBlank(std::string_view line);

// True where the whole word is the number; a plus may stand in front. "nan" and "inf" are numbers
// here, what does not fit the type is none.
bool pointNumber(std::string_view word, double& value);
bool pointNumber(std::string_view word, float& value);
bool pointWholeNumber(std::string_view word, int64_t& value);
