#include "orobasictypes/bitvector.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "orobasictypes/binmagic.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/wordkernels.h"

namespace {

constexpr char bitvectorSource[] = "orobasictypes/bitvector";

// Where the storage changes, in words. A vector that goes to and fro across one number would copy
// itself each time, so the way back lies far below the way up.
constexpr int64_t largeWhenMade = 4096;
constexpr int64_t largeWhenGrown = 4097;
constexpr int64_t smallBelow = 1536;
constexpr int32_t mostSmallWords = 6144;  // beyond what is needed

constexpr int32_t leastMaximum = 31;

// The highest bit of so many words.
int32_t maximumOf(int64_t words) {
  return static_cast<int32_t>(std::min<int64_t>(words * 32 - 1, INT32_MAX));
}

int64_t bytesOf(int64_t words) { return words * int64_t{sizeof(uint32_t)}; }

void clearWords(uint32_t* words, int64_t count) {
  std::memset(words, 0, static_cast<size_t>(bytesOf(count)));
}

void copyWords(uint32_t* to, const uint32_t* from, int64_t count) {
  std::memcpy(to, from, static_cast<size_t>(bytesOf(count)));
}

bool isAnySet(const uint32_t* words, int32_t count) {
  return wordKernels().firstOther(words, count, 0) < count;
}

// The bits of a word from place `from` on, and those up to place `to`.
uint32_t bitsFrom(int32_t from) { return UINT32_MAX << (from & 31); }
uint32_t bitsUpTo(int32_t to) { return UINT32_MAX >> (31 - (to & 31)); }

}  // namespace

// ---------------------------------------------------------------------------------------------
// Making and copying

BitVector::BitVector(int32_t maximumBit) : magic_(new BinMagic(fileTag)) {
  makeStorage(std::max(maximumBit >> 5, 0) + 1);
}

BitVector::BitVector(const BitVector& other)
    : OroShared(other),
      magic_(new BinMagic(fileTag)),
      maximumBit_(other.maximumBit_),
      numSet_(other.numSet_) {
  if (other.bvwordsLarge_ != nullptr) {
    bvwordsLarge_ = new OroMM::WordArray(*other.bvwordsLarge_);
  } else if (other.bvwords_ != nullptr) {
    kelMalloc(bvwords_, sizeof(uint32_t), other.wordCount());
    copyWords(bvwords_, other.bvwords_, other.wordCount());
  }
}

BitVector::BitVector(BitVector&& other) noexcept
    : OroShared(other), magic_(std::exchange(other.magic_, nullptr)) {
  Swap(other);
}

BitVector& BitVector::operator=(const BitVector& other) {
  if (this == &other) return *this;
  if (other.bvwordsLarge_ == nullptr) {
    takeSmall(other);
  } else {
    if (bvwordsLarge_ != nullptr) {
      bvwordsLarge_->Assign(*other.bvwordsLarge_, other.bvwordsLarge_->Size());
    } else {
      dropStorage();
      bvwordsLarge_ = new OroMM::WordArray(*other.bvwordsLarge_);
    }
    maximumBit_ = other.maximumBit_;
  }
  numSet_ = other.numSet_;
  return *this;
}

BitVector::~BitVector() {
  dropStorage();
  delete magic_;
}

void BitVector::Swap(BitVector& other) {
  std::swap(bvwords_, other.bvwords_);
  std::swap(bvwordsLarge_, other.bvwordsLarge_);
  std::swap(maximumBit_, other.maximumBit_);
  std::swap(numSet_, other.numSet_);
}

BitVector& BitVector::Empty() {
  static BitVector* const empty = [] {
    auto* const made = new BitVector(10);
    made->addRef();
    return made;
  }();
  return *empty;
}

// From a vector in one piece: a buffer that is large enough stays.
void BitVector::takeSmall(const BitVector& other) {
  const int32_t words = other.wordCount();
  if (bvwords_ != nullptr && wordCount() >= words) {
    if (numSet_ != 0) clearWords(bvwords_ + words, wordCount() - words);
  } else {
    dropStorage();
    if (other.bvwords_ == nullptr) return;
    kelMalloc(bvwords_, sizeof(uint32_t), words);
    maximumBit_ = other.maximumBit_;
  }
  if (words > 0) copyWords(bvwords_, other.bvwords_, words);
}

// ---------------------------------------------------------------------------------------------
// Storage

// Cleared words, in the kind of storage that so many of them get.
void BitVector::makeStorage(int64_t words) {
  if (words >= largeWhenMade && OroMM::arrayManager() != nullptr) {
    bvwordsLarge_ = new OroMM::WordArray(static_cast<int32_t>(words));
  } else {
    kelMalloc(bvwords_, sizeof(uint32_t), static_cast<int32_t>(words));
    clearWords(bvwords_, words);
  }
  maximumBit_ = maximumOf(words);
  numSet_ = 0;
}

void BitVector::dropStorage() {
  kelFree(std::exchange(bvwords_, nullptr));
  delete std::exchange(bvwordsLarge_, nullptr);
  maximumBit_ = -1;
  numSet_ = 0;
}

void BitVector::becomeOneWord() {
  dropStorage();
  makeStorage(1);
}

void BitVector::Resize(int32_t newMaximum) {
  if (bvwords_ == nullptr && bvwordsLarge_ == nullptr) {
    kelAssertFail("", bitvectorSource, 873);
    becomeOneWord();
  }
  const int64_t wanted = std::max(newMaximum, leastMaximum);
  if (wanted >> 5 == maximumBit_ >> 5) return;
  int64_t target = wanted;
  if (wanted > maximumBit_) {
    for (target = maximumBit_; target <= wanted && target < INT32_MAX;) {
      target = std::min<int64_t>(target * 2, INT32_MAX);
    }
  }
  const int32_t old = wordCount();
  const auto grown = static_cast<int32_t>(target / 32 + 1);
  const auto needed = static_cast<int32_t>(wanted / 32 + 1);
  // What a shrinking vector loses is not looked at.
  if (needed < old) numSet_ = -1;
  if (bvwordsLarge_ != nullptr) {
    if (needed < smallBelow && needed <= old) {
      makeSmall(needed);
    } else {
      resizeLarge(needed > old ? grown : needed);
    }
  } else if (needed >= largeWhenGrown && needed > old) {
    makeLarge(needed, grown);
  } else {
    const int32_t most = std::max(std::min(grown, mostSmallWords), needed);
    maximumBit_ = maximumOf(kelRealloc(bvwords_, sizeof(uint32_t), old, needed, most));
  }
}

void BitVector::makeSmall(int32_t words) {
  if (bvwords_ != nullptr) kelAssertFail("!bvwords_", bitvectorSource, 826);
  uint32_t* small = nullptr;
  kelMalloc(small, sizeof(uint32_t), words);
  readWords(0, small, words);
  delete std::exchange(bvwordsLarge_, nullptr);
  bvwords_ = small;
  maximumBit_ = maximumOf(words);
}

// Without a manager the words stay in one piece, however many they are.
void BitVector::makeLarge(int32_t needed, int32_t grown) {
  if (bvwordsLarge_ != nullptr) kelAssertFail("!bvwordsLarge_", bitvectorSource, 837);
  const int32_t old = wordCount();
  if (OroMM::arrayManager() == nullptr) {
    maximumBit_ = maximumOf(kelRealloc(bvwords_, sizeof(uint32_t), old, needed, grown));
    return;
  }
  uint32_t* const small = std::exchange(bvwords_, nullptr);
  bvwordsLarge_ = new OroMM::WordArray(grown);
  maximumBit_ = maximumOf(bvwordsLarge_->Size());
  putWords(0, small, old);
  kelFree(small);
}

// The whole array can be used afterwards. Behind the words that could be used before it is zero.
void BitVector::resizeLarge(int32_t words) {
  const int32_t old = bvwordsLarge_->Size();
  bvwordsLarge_->Resize(words, false);
  const int32_t size = bvwordsLarge_->Size();
  if (size > old) bvwordsLarge_->ClearRange(old, size);
  maximumBit_ = maximumOf(size);
}

// Behind the last word of an operand that has a bit, its room is nobody's wish.
void BitVector::growToWord(int32_t last) {
  if (last >= wordCount()) Resize(maximumOf(int64_t{last} + 1));
}

// ---------------------------------------------------------------------------------------------
// Words

// The word itself, its block being made when it is missing.
uint32_t* BitVector::makeWord(int32_t word) {
  return bvwords_ != nullptr ? bvwords_ + word : &bvwordsLarge_->At(word);
}

uint32_t BitVector::wordAt(int32_t word) const {
  const uint32_t* const found = wordOf(static_cast<uint32_t>(word) << 5);
  return found != nullptr ? *found : 0;
}

// Keeps some bits of a word and flips some of the result.
void BitVector::maskWord(int32_t word, uint32_t kept, uint32_t flipped) {
  const uint32_t old = wordAt(word);
  const uint32_t changed = (old & kept) ^ flipped;
  if (changed != old) *makeWord(word) = changed;
}

// Words outside the vector are zeros.
void BitVector::readWords(int64_t word, uint32_t* to, int32_t count) const {
  const int64_t end = std::min<int64_t>(word + count, wordCount());
  while (count > 0) {
    int64_t run = count;
    const uint32_t* from = nullptr;
    if (word < 0) {
      run = std::min<int64_t>(run, -word);
    } else if (word < end) {
      const Stretch part = stretch(static_cast<int32_t>(word), static_cast<int32_t>(end));
      from = part.words;
      run = part.count;
    }
    if (from != nullptr) {
      copyWords(to, from, run);
    } else {
      clearWords(to, run);
    }
    to += run;
    word += run;
    count -= static_cast<int32_t>(run);
  }
}

// Zeros need no block.
void BitVector::putWords(int32_t word, const uint32_t* from, int32_t count) {
  const int32_t end = word + count;
  while (word < end) {
    const Stretch part = stretch(word, end);
    if (part.words != nullptr || isAnySet(from, part.count)) {
      copyWords(part.words != nullptr ? part.words : makeWord(word), from, part.count);
    }
    from += part.count;
    word += part.count;
  }
}

void BitVector::fillWords(int32_t from, int32_t to, bool set) {
  while (from < to) {
    const Stretch part = stretch(from, to);
    uint32_t* const words = part.words != nullptr || !set ? part.words : makeWord(from);
    if (words != nullptr) {
      std::memset(words, set ? 0xFF : 0, static_cast<size_t>(bytesOf(part.count)));
    }
    from += part.count;
  }
}

// Requires: 0 <= from <= to <= maximumBit_.
void BitVector::changeBits(int32_t from, int32_t to, bool set) {
  const int32_t first = from >> 5;
  const int32_t last = to >> 5;
  const auto change = [&](int32_t word, uint32_t bits) { maskWord(word, ~bits, set ? bits : 0); };
  if (first == last) return change(first, bitsFrom(from) & bitsUpTo(to));
  change(first, bitsFrom(from));
  fillWords(first + 1, last, set);
  change(last, bitsUpTo(to));
}

// The first `count` words.
void BitVector::flipWords(int32_t count) {
  for (int32_t word = 0; word < count;) {
    const Stretch part = stretch(word, count);
    if (part.words != nullptr) {
      wordKernels().invert(part.words, part.count);
    } else {
      fillWords(word, word + part.count, true);
    }
    word += part.count;
  }
}

int64_t BitVector::countWords(int32_t from, int32_t to) const {
  int64_t sum = 0;
  while (from < to) {
    const Stretch part = stretch(from, to);
    if (part.words != nullptr) sum += wordKernels().population(part.words, part.count);
    from += part.count;
  }
  return sum;
}

// -1 when there is none.
int32_t BitVector::lastUsedWord() const {
  constexpr int32_t step = OroMM::WordArray::perBlock;
  for (int32_t end = wordCount(); end > 0;) {
    const int32_t start = (end - 1) / step * step;
    const Stretch part = stretch(start, end);
    if (part.words != nullptr) {
      const int64_t last = wordKernels().lastOther(part.words, part.count, 0);
      if (last >= 0) return start + static_cast<int32_t>(last);
    }
    end = start;
  }
  return -1;
}

bool BitVector::isEmptyFrom(int32_t word) const {
  const int32_t end = wordCount();
  while (word < end) {
    const Stretch part = stretch(word, end);
    if (part.words != nullptr && isAnySet(part.words, part.count)) return false;
    word += part.count;
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// Single bits and walking

void BitVector::setSlowly(int32_t b) {
  if (b < 0) return;
  if (!has(b)) Resize(b);
  setIn(makeWord(b >> 5), 0, static_cast<uint32_t>(b));
}

// The first bit behind the word of `from`, which the caller has looked at, that differs from
// `skipped` (0 or all ones). That word stands at `place` of `words`, its block or the whole of a
// small vector. Where the next step of a walk begins is known at the end of this one only, so few
// instructions lead to the words; those of the last block behind the vector's end are looked at
// too.
template <uint32_t skipped>
[[gnu::aligned(64)]] int32_t BitVector::scanForward(const uint32_t* words, uint32_t place,
                                                    uint32_t from) const {
  constexpr uint64_t pattern = uint64_t{skipped} << 32 | skipped;
  constexpr int32_t step = 8;      // words
  constexpr int32_t isNear = 192;  // words; farther away the kernel is faster
  const uint32_t* const at = words + place;
  const int32_t here = isSmall() ? wordCount() : OroMM::WordArray::perBlock;
  int32_t left = std::min(here - static_cast<int32_t>(place), isNear) - 1 - step;
  const auto found = [&](const uint32_t* next, uint64_t others) {
    const uint32_t bit = (from & ~31U) + static_cast<uint32_t>((next - at) * 32) +
                         static_cast<uint32_t>(std::countr_zero(others));
    return bit < bitCount() ? static_cast<int32_t>(bit) : -1;
  };
  const uint32_t* next = at + 1;
  for (; left >= 0; left -= step, next += step) {
#pragma GCC unroll 4
    for (int32_t i = 0; i < step; i += 2) {
      const uint64_t others = bitwords::pairAt(next + i, true) ^ pattern;
      if (others != 0) return found(next + i, others);
    }
  }
  for (left += step; left > 0; --left, ++next) {
    if (*next != skipped) return found(next, *next ^ skipped);
  }
  return scanFar(static_cast<int32_t>(from >> 5) + static_cast<int32_t>(next - at), wordCount(),
                 skipped);
}

template int32_t BitVector::scanForward<0>(const uint32_t* words, uint32_t place,
                                           uint32_t from) const;
template int32_t BitVector::scanForward<UINT32_MAX>(const uint32_t* words, uint32_t place,
                                                    uint32_t from) const;

int32_t BitVector::scanFar(int32_t word, int32_t end, uint32_t skipped) const {
  while (word < end) {
    const Stretch part = stretch(word, end);
    if (part.words != nullptr) {
      const int64_t found = wordKernels().firstOther(part.words, part.count, skipped);
      if (found < part.count) {
        const uint32_t others = part.words[found] ^ skipped;
        return (word + static_cast<int32_t>(found)) * 32 + std::countr_zero(others);
      }
    } else if (skipped != 0) {
      return word * 32;
    }
    word += part.count;
  }
  return -1;
}

int32_t BitVector::firstSet() const { return NextSet(-1); }

int32_t BitVector::firstClear() const { return NextClear(-1); }

int32_t BitVector::scanBackward(int32_t b, uint32_t skipped) const {
  if (b < 1) return -1;
  const int32_t from = b > maximumBit_ ? maximumBit_ : b - 1;
  if (from < 0) return -1;
  int32_t word = from >> 5;
  const uint32_t first = (wordAt(word) ^ skipped) & bitsUpTo(from);
  if (first != 0) return word * 32 + 31 - std::countl_zero(first);
  for (; word > 0;) {
    const int32_t start = (word - 1) / OroMM::WordArray::perBlock * OroMM::WordArray::perBlock;
    const Stretch part = stretch(start, word);
    if (part.words != nullptr) {
      const int64_t found = wordKernels().lastOther(part.words, part.count, skipped);
      if (found >= 0) {
        word = start + static_cast<int32_t>(found);
        return word * 32 + 31 - std::countl_zero(wordAt(word) ^ skipped);
      }
    } else if (skipped != 0) {
      return word * 32 - 1;
    }
    word = start;
  }
  return -1;
}

// ---------------------------------------------------------------------------------------------
// Counting

int32_t BitVector::CountSet() const {
  if (numSet_ >= 0) return numSet_;
  const int64_t count = countWords(0, wordCount());
  if (count > INT32_MAX) return INT32_MAX;
  return numSet_ = static_cast<int32_t>(count);
}

int32_t BitVector::Recount() {
  numSet_ = -1;
  return CountSet();
}

int32_t BitVector::CountAfter(int32_t b) const {
  if (b < 0) return CountSet();
  if (b >= maximumBit_) return 0;
  const int32_t word = (b + 1) >> 5;
  const int inFirst = std::popcount(wordAt(word) & bitsFrom(b + 1));
  return inFirst + static_cast<int32_t>(countWords(word + 1, wordCount()));
}

int32_t BitVector::CountBelow(int32_t b) const {
  if (b < 1 || maximumBit_ < 0 || Test(0)) return 0;
  const int32_t last = std::min(b - 1, maximumBit_);
  const int inLast = std::popcount(wordAt(last >> 5) & bitsUpTo(last));
  return inLast + static_cast<int32_t>(countWords(0, last >> 5));
}

void BitVector::Partition(int32_t parts, int32_t* first, int32_t* start) const {
  if (parts < 1) return;
  constexpr int32_t step = 64;  // words that are counted at once
  const int32_t count = CountSet();
  int32_t word = 0;     // where the steps stand
  int64_t before = 0;   // set bits before that word
  int64_t inStep = -1;  // set bits of that step, -1 when they are not counted yet
  for (int32_t j = 0; j < parts; ++j) {
    // In this order, and in doubles: callers know the cuts of this formula.
    start[j] = static_cast<int32_t>(static_cast<double>(j) / parts * count);
    if (start[j] >= count) {
      first[j] = -1;
      continue;
    }
    for (;;) {
      if (inStep < 0) inStep = countWords(word, std::min(word + step, wordCount()));
      if (before + inStep > start[j]) break;
      before += std::exchange(inStep, -1);
      word += step;
    }
    first[j] = selectBit(word, start[j] - before);
  }
  start[parts] = count;
  first[parts] = -1;
}

// The set bit behind `rank` others, counted from a word on. Requires: there is one.
int32_t BitVector::selectBit(int32_t word, int64_t rank) const {
  uint32_t bits = wordAt(word);
  for (int inWord = std::popcount(bits); rank >= inWord; inWord = std::popcount(bits)) {
    rank -= inWord;
    bits = wordAt(++word);
  }
  for (; rank > 0; --rank) bits &= bits - 1;
  return word * 32 + std::countr_zero(bits);
}

// ---------------------------------------------------------------------------------------------
// Two vectors

bool BitVector::operator==(const BitVector& other) const {
  if (this == &other) return true;
  if (numSet_ >= 0 && other.numSet_ >= 0 && numSet_ != other.numSet_) return false;
  const auto isSame = [](int32_t, const Stretch& mine, const Stretch& theirs) {
    if (mine.words != nullptr && theirs.words != nullptr) {
      return std::memcmp(mine.words, theirs.words, static_cast<size_t>(bytesOf(mine.count))) == 0;
    }
    const uint32_t* const only = mine.words != nullptr ? mine.words : theirs.words;
    return only == nullptr || !isAnySet(only, mine.count);
  };
  const int32_t common = std::min(wordCount(), other.wordCount());
  return forCommon(other, isSame) && isEmptyFrom(common) && other.isEmptyFrom(common);
}

bool BitVector::Disjoint(const BitVector& other) const {
  return forCommon(other, [](int32_t, const Stretch& mine, const Stretch& theirs) {
    return mine.words == nullptr || theirs.words == nullptr ||
           !wordKernels().isAnyCommon(mine.words, theirs.words, mine.count);
  });
}

// Calls visit(first word, mine, theirs) for the stretches of words that both have, of one length
// each, until it is false. Whether it never was.
template <class Visit>
bool BitVector::forCommon(const BitVector& other, const Visit& visit) const {
  const int32_t common = std::min(wordCount(), other.wordCount());
  for (int32_t word = 0; word < common;) {
    Stretch mine = stretch(word, common);
    Stretch theirs = other.stretch(word, common);
    mine.count = theirs.count = std::min(mine.count, theirs.count);
    if (!visit(word, mine, theirs)) return false;
    word += mine.count;
  }
  return true;
}

// Runs the operation over the words that both have. Where this vector has no memory, the other's
// words are what comes out of it, or nothing does.
template <class Operation>
void BitVector::mergeWith(const BitVector& other) {
  constexpr bool keepsTheirs = Operation::narrow(0, 1) != 0;
  numSet_ = -1;
  forCommon(other, [this](int32_t word, const Stretch& mine, const Stretch& theirs) {
    if (mine.words != nullptr && theirs.words != nullptr) {
      (wordKernels().*kernelOf(Operation()))(mine.words, theirs.words, mine.count);
    } else if (keepsTheirs && theirs.words != nullptr) {
      putWords(word, theirs.words, mine.count);
    } else if (mine.words != nullptr && Operation::narrow(1, 0) == 0) {
      clearWords(mine.words, mine.count);
    }
    return true;
  });
}

BitVector& BitVector::conjoin(const BitVector& other) {
  if (numSet_ == 0) return *this;
  if (other.numSet_ == 0) {
    Zero();
    return *this;
  }
  mergeWith<bitwords::Conjoin>(other);
  if (other.wordCount() < wordCount()) fillWords(other.wordCount(), wordCount(), false);
  return *this;
}

BitVector& BitVector::unite(const BitVector& other) {
  if (other.numSet_ == 0) return *this;
  if (other.wordCount() > wordCount()) growToWord(other.lastUsedWord());
  mergeWith<bitwords::Unite>(other);
  return *this;
}

BitVector& BitVector::differ(const BitVector& other) {
  if (other.numSet_ == 0) return *this;
  if (other.wordCount() > wordCount()) growToWord(other.lastUsedWord());
  mergeWith<bitwords::Differ>(other);
  return *this;
}

BitVector& BitVector::subtract(const BitVector& other) {
  if (numSet_ != 0 && other.numSet_ != 0) mergeWith<bitwords::Subtract>(other);
  return *this;
}

void BitVector::CopyValues(const BitVector& other) {
  if (this == &other) return;
  if (other.numSet_ == 0) return Zero();
  if (maximumBit_ < 0 || IsLarge() == other.IsLarge()) {
    *this = other;
    return;
  }
  const int32_t words = other.wordCount();
  if (words > wordCount()) {
    if (IsLarge()) {
      resizeLarge(words);
    } else {
      dropStorage();
      kelMalloc(bvwords_, sizeof(uint32_t), words);
      maximumBit_ = maximumOf(words);
    }
  }
  for (int32_t word = 0; word < words;) {
    const Stretch theirs = other.stretch(word, words);
    if (theirs.words != nullptr) {
      putWords(word, theirs.words, theirs.count);
    } else {
      fillWords(word, word + theirs.count, false);
    }
    word += theirs.count;
  }
  fillWords(words, wordCount(), false);
  numSet_ = other.numSet_;
}

// ---------------------------------------------------------------------------------------------
// All bits, and ranges of them

void BitVector::Not() {
  flipWords(wordCount());
  numSet_ = -1;
}

void BitVector::complementSlowly(int32_t n) {
  Resize(n);
  if (n >= 0) {
    const int32_t last = n >> 5;
    flipWords(last);
    maskWord(last, UINT32_MAX, bitsUpTo(n));
    maskWord(0, UINT32_MAX, 1);  // bit 0 is no item
    numSet_ = -1;
  }
}

void BitVector::SetAll(int32_t n) {
  n = std::max(n, 0);
  Resize(n);
  const int32_t last = n >> 5;
  fillWords(0, last, true);
  maskWord(last, 0, bitsUpTo(n));
  maskWord(0, ~1U, 0);  // bit 0 is no item
  fillWords(last + 1, wordCount(), false);
  numSet_ = n;
}

void BitVector::SetCapacity() {
  if (maximumBit_ < 0) return;
  fillWords(0, wordCount(), true);
  maskWord(0, ~1U, 0);
  numSet_ = maximumBit_;
}

void BitVector::Zero() {
  if (numSet_ == 0) return;
  fillWords(0, wordCount(), false);
  numSet_ = 0;
}

bool BitVector::ClearRange(int32_t from, int32_t to) {
  if (from > maximumBit_) return false;
  from = std::max(from, 0);
  to = std::min(to, maximumBit_);
  if (from <= to) changeBits(from, to, false);
  numSet_ = -1;
  return true;
}

bool BitVector::SetRange(int32_t from, int32_t to) {
  if (from > maximumBit_) return false;
  from = std::max(from, 0);
  to = std::min(to, maximumBit_);
  if (from <= to) changeBits(from, to, true);
  numSet_ = -1;
  return true;
}

// In pieces from the top down: what a piece is made of lies no higher than the piece itself.
void BitVector::Shift(int32_t n) {
  if (n <= 0) return;
  const int32_t used = lastUsedWord();
  Resize(static_cast<int32_t>(std::min<int64_t>(int64_t{maximumBit_} + n, INT32_MAX)));
  const int32_t words = n >> 5;
  const int32_t bits = n & 31;
  constexpr int32_t piece = 1024;
  uint32_t from[piece + 1];
  uint32_t to[piece];
  auto end = static_cast<int32_t>(std::min<int64_t>(int64_t{used} + words + 2, wordCount()));
  while (end > 0) {
    const int32_t start = std::max(end - piece, 0);
    const int32_t count = end - start;
    readWords(int64_t{start} - words - 1, from, count + 1);
    for (int32_t i = 0; i < count; ++i) {
      const uint64_t pair = uint64_t{from[i + 1]} << 32 | from[i];
      to[i] = static_cast<uint32_t>(pair << bits >> 32);
    }
    putWords(start, to, count);
    end = start;
  }
  numSet_ = -1;
}
