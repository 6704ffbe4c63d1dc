#include "base/basic/kelnaturalorder.h"

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

int lowerCase(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

int skipZeros(const char*& text) {
  int skipped = 0;
  for (; *text == '0'; ++text) ++skipped;
  return skipped;
}

int sign(std::ptrdiff_t value) { return (value > 0) - (value < 0); }

// The digit runs at both texts, which are passed over: as numbers, zeros in front left out.
int compareRuns(const char*& left, const char*& right) {
  const char* const leftStart = left;
  const char* const rightStart = right;
  int difference = 0;
  while (isDigit(*left) && isDigit(*right)) {
    if (difference == 0) difference = *left - *right;
    ++left;
    ++right;
  }
  while (isDigit(*left)) ++left;
  while (isDigit(*right)) ++right;
  const std::ptrdiff_t longer = (left - leftStart) - (right - rightStart);
  return longer != 0 ? sign(longer) : sign(difference);
}

}  // namespace

int kelNaturalCompare(const char* left, const char* right) {
  if (left == nullptr || right == nullptr) return (left != nullptr) - (right != nullptr);
  int zeros = 0;  // the first difference in leading zeros, which decides if nothing else does
  while (*left != '\0' && *right != '\0') {
    if (isDigit(*left) && isDigit(*right)) {
      const int leftZeros = skipZeros(left);
      const int rightZeros = skipZeros(right);
      if (zeros == 0) zeros = sign(leftZeros - rightZeros);
      const int difference = compareRuns(left, right);
      if (difference != 0) return difference;
      continue;
    }
    if (*left != *right) {
      const int difference = lowerCase(*left) - lowerCase(*right);
      return difference != 0 ? sign(difference) : 1;
    }
    ++left;
    ++right;
  }
  if (*left != *right) return *left != '\0' ? 1 : -1;
  return zeros;
}
