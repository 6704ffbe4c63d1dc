// The numbers of text point files from their digits.
//
//   const char* const next = pointTakeReal(first, last, value);
//   if (next == nullptr) return fail();
//
// Any thread.
#pragma once

// Takes the number that the text begins with, to the nearest double; gives where it ends, null
// where there is none or none that a double can hold. A minus may stand in front; "inf" and "nan"
// are numbers. Reads what std::from_chars reads.
const char* pointTakeReal(const char* first, const char* last, double& value);
