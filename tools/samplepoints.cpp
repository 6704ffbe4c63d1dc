#include "tools/samplepoints.h"

#include <charconv>

namespace samplepoints {

namespace {

constexpr uint64_t kRowLength = 1024;  // points of one scan line, about a metre apart

// Integers only: the C libraries do not agree on the last digit of a sine.
uint64_t scattered(uint64_t value) {
  value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9u;
  value = (value ^ (value >> 27)) * 0x94d049bb133111ebu;
  return value ^ (value >> 31);
}

// A hill of the given length and height: rises and falls as a parabola, in centimetres.
uint64_t hill(uint64_t place, uint64_t length, uint64_t height) {
  uint64_t along = place % length;
  return 4 * height * along * (length - along) / (length * length);
}

void appendCentimetres(std::string& text, uint64_t value) {
  char digits[24];
  auto end = std::to_chars(digits, digits + sizeof digits, value / 100).ptr;
  text.append(digits, end);
  text += '.';
  text += static_cast<char>('0' + value / 10 % 10);
  text += static_cast<char>('0' + value % 10);
}

void appendNumber(std::string& text, uint64_t value) {
  char digits[24];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

}  // namespace

void appendLine(std::string& text, uint64_t index) {
  uint64_t noise = scattered(index + 1);
  uint64_t column = index % kRowLength;
  uint64_t row = index / kRowLength;
  uint64_t height =
      hill(column, 300, 2500) + hill(row, 170, 1800) + hill(column + row, 90, 900) + noise % 60;

  appendCentimetres(text, 63700000 + column * 100 + (noise >> 8) % 90);
  text += ' ';
  appendCentimetres(text, 84900000 + row * 100 + (noise >> 16) % 90);
  text += ' ';
  appendCentimetres(text, 40000 + height);
  text += ' ';
  appendNumber(text, 40 + height / 32 + (noise >> 24) % 20);
  text += ' ';
  appendNumber(text, 60 + height / 40 + (noise >> 32) % 20);
  text += ' ';
  appendNumber(text, 50 + height / 48 + (noise >> 40) % 20);
  text += '\n';
}

std::string lines(uint64_t count) {
  std::string text;
  for (uint64_t index = 0; index < count; ++index) appendLine(text, index);
  return text;
}

}  // namespace samplepoints
