// The forms of BitVector outside memory: chunks and text.

#include <algorithm>
#include <cstdio>
#include <ostream>

#include "orobasictypes/binio.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/wordkernels.h"

namespace {

enum Form : int32_t { kDense = 0, kSparse = 1 };

constexpr int32_t wordsAlwaysDense = 32;
constexpr int32_t firstSparseVersion = 13;  // of files that have one
constexpr uint32_t mostWords = 0x4000000;   // that an index can name the bits of
constexpr int32_t piece = 1024;             // values that are moved at once

// Whether so many values of 32 bits can still come. An input that does not know its size may go on.
bool canHold(BinInput& input, int64_t values) {
  return input.GetSize() <= 0 || values * 4 <= input.GetSize() - input.Tell();
}

// number(n) and text(t) put down what they are given.
template <class Number, class Text>
void show(const BitVector& bits, const Number& number, const Text& text) {
  text("numSet=");
  number(bits.CountSet());
  text("\n");
  int inLine = 0;
  bits.ForEachSet([&](int32_t b) {
    number(b);
    text(" ");
    if (++inLine == 8) text("\n");
    inLine %= 8;
  });
  text("\n");
}

}  // namespace

bool BitVector::Write(BinOutput& output) const {
  const auto words = static_cast<uint32_t>(wordCount());
  const int32_t version = output.GetFileVersion();
  // In this order: the bits of a short vector are not counted for this.
  const bool isSparse = words > wordsAlwaysDense &&
                        (version == 0 || version >= firstSparseVersion) &&
                        CountSet() < static_cast<int32_t>(words / 2);
  const BinMagic magic = magic_ != nullptr ? *magic_ : BinMagic(fileTag);
  const int32_t numbers[] = {maximumBit_, isSparse ? kSparse : kDense, KnownCount()};
  return magic.Write(output) && output.Write(&words, 1) && output.Write(numbers, 3) &&
         (isSparse ? writeSparse(output) : writeDense(output)) && output.IsGood();
}

bool BitVector::writeSparse(BinOutput& output) const {
  int32_t indices[piece];
  int32_t count = 0;
  bool isWritten = true;
  ForEachSet([&](int32_t b) {
    indices[count++] = b;
    if (count < piece) return;
    isWritten = isWritten && output.Write(indices, count);
    count = 0;
  });
  return isWritten && output.Write(indices, count);
}

bool BitVector::writeDense(BinOutput& output) const {
  uint32_t words[piece];
  const int32_t end = wordCount();
  for (int32_t word = 0; word < end; word += piece) {
    const int32_t count = std::min(piece, end - word);
    readWords(word, words, count);
    if (!output.Write(words, count)) return false;
  }
  return true;
}

bool BitVector::Read(BinInput& input) {
  uint32_t words = 0;
  int32_t numbers[3] = {};  // maximum bit, form, count
  if (!BinMagic().ReadMatch(input, BinMagic(fileTag))) return false;
  if (!input.Read(&words, 1) || !input.Read(numbers, 3)) return false;
  const auto [maximumBit, form, count] = numbers;
  if (words == 0 || maximumBit < 1) {
    becomeOneWord();
    numSet_ = -1;
    return true;
  }
  if (form != kDense && form != kSparse) {
    dropStorage();
    return true;
  }
  if (readForm(input, words, form, count)) return input.IsGood();
  becomeOneWord();
  return false;
}

bool BitVector::readForm(BinInput& input, uint32_t words, int32_t form, int32_t count) {
  dropStorage();
  if (words > mostWords || !canHold(input, form == kDense ? int64_t{words} : count)) return false;
  makeStorage(words);
  return form == kDense ? readDense(input) : readSparse(input, count);
}

bool BitVector::readDense(BinInput& input) {
  uint32_t words[piece];
  const int32_t end = wordCount();
  numSet_ = -1;
  for (int32_t word = 0; word < end; word += piece) {
    const int32_t count = std::min(piece, end - word);
    if (!input.Read(words, count)) return false;
    putWords(word, words, count);
  }
  return true;
}

bool BitVector::readSparse(BinInput& input, int32_t count) {
  int32_t indices[piece];
  while (count > 0) {
    const int32_t run = std::min(piece, count);
    if (!input.Read(indices, run)) return false;
    for (int32_t i = 0; i < run; ++i) Set(indices[i]);
    count -= run;
  }
  return true;
}

void BitVector::Print() const {
  show(
      *this, [](int32_t number) { std::printf("%d", number); },
      [](const char* text) { std::printf("%s", text); });
  std::printf("\n");
}

std::ostream& operator<<(std::ostream& out, const BitVector& bits) {
  show(
      bits, [&out](int32_t number) { out << number; }, [&out](const char* text) { out << text; });
  return out;
}
