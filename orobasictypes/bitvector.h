// BitVector: a set of items, one bit each: which points, which triangles are selected.
//
//   BitVector selected(count);
//   selected.Set(17);
//   selected |= others;
//   for (int32_t i = selected.NextSet(-1); i >= 0; i = selected.NextSet(i)) use(i);
//
// Items are numbered from 1. Bit 0 is ordinary storage that counts everywhere, but what fills a
// vector leaves it clear. Small vectors lie in one piece; large ones in the blocks of the memory
// manager, where there is one, and stretches of zeros there need no memory. The number of set bits
// is known or -1, and counted at need. Indices below 0 name no bit. To look at all set bits take
// ForEachSet, or bitvectoriter.h.
//
// The vector owns its words. Reading is safe on several threads while nobody writes, but CountSet
// may note what it found: call it before threads share a vector.
#pragma once

#include <bit>
#include <cstdint>
#include <iosfwd>

#include "orobasictypes/array.h"
#include "orobasictypes/bitwords.h"
#include "orobasictypes/oroshared.h"

class BinInput;
class BinMagic;
class BinOutput;
class BlockBitVector;
class IOroRandom;

class BitVector : public OroShared {
 public:
  // Empty, with whole words for the bits 0 to `maximumBit` at least.
  explicit BitVector(int32_t maximumBit = 0);
  // As large as the other, in the same kind of storage.
  BitVector(const BitVector& other);
  explicit BitVector(const BlockBitVector& other);
  // Leaves the other without storage: its maximum bit is -1, and only assignment, or the growth by
  // Set and Resize after an assertion, make it usable.
  BitVector(BitVector&& other) noexcept;
  // A buffer that is large enough stays, and with it the larger maximum bit.
  BitVector& operator=(const BitVector& other);
  // Ends with the other's last block that is not empty.
  BitVector& operator=(const BlockBitVector& other);
  ~BitVector() override;
  // Exchanges the contents.
  void Swap(BitVector& other);
  // One empty vector for all who must give a valid one. Not to be changed.
  static BitVector& Empty();

  // The highest bit that there is room for: words * 32 - 1.
  int32_t MaximumBit() const { return maximumBit_; }
  // The number of set bits, or -1 when it is not known.
  int32_t KnownCount() const { return numSet_ >= 0 ? numSet_ : -1; }
  bool IsLarge() const { return bvwordsLarge_ != nullptr; }

  // Single bits. Above the maximum bit, Test is false, Clear does nothing and Set makes room.
  bool Test(int32_t b) const {
    if (!has(b)) return false;
    if (bvwords_ != nullptr) return (bvwords_[b >> 5] >> (b & 31) & 1) != 0;
    const uint32_t* const word = wordOf(static_cast<uint32_t>(b));
    return word != nullptr && (*word >> (b & 31) & 1) != 0;
  }
  void Set(int32_t b) {
    const auto bit = static_cast<uint32_t>(b);
    if (has(b)) [[likely]] {
      if (isSmall()) return setIn(bvwords_, bit >> 5, bit);
      uint32_t* const block = largeBlock(bit);
      if (block != nullptr) [[likely]]
        return setIn(block, placeInBlock(bit), bit);
    }
    setSlowly(b);
  }
  // Sets a bit that there is room for; whether it was clear.
  bool Insert(int32_t b) {
    uint32_t* const word = wordOf(static_cast<uint32_t>(b));
    if (word == nullptr) {
      setSlowly(b);
      return true;
    }
    const uint32_t bit = 1U << (b & 31);
    if ((*word & bit) != 0) return false;
    *word |= bit;
    if (numSet_ >= 0) addToCount(1);
    return true;
  }
  void Clear(int32_t b) {
    uint32_t* const word = has(b) ? wordOf(static_cast<uint32_t>(b)) : nullptr;
    if (word != nullptr) clearIn(*word, b);
  }

  // The next set or clear bit strictly behind b, from bit 0 for b below 0; -1 when there is none.
  int32_t NextSet(int32_t b) const {
    const uint32_t next = static_cast<uint32_t>(b) + 1;
    const OroMM::WordArray* const large = bvwordsLarge_;  // here, so that a walk loads it once
    if (next >= bitCount()) [[unlikely]]
      return b < -1 ? firstSet() : -1;
    if (isSmall()) return nextSetIn(bvwords_, next >> 5, next);
    const uint32_t* const block = large->BlockAt(static_cast<int32_t>(next >> 16));
    if (block == nullptr) [[unlikely]]
      return scanFar(static_cast<int32_t>(next >> 5), wordCount(), 0);
    return nextSetIn(block, placeInBlock(next), next);
  }
  int32_t NextClear(int32_t b) const {
    const uint32_t next = static_cast<uint32_t>(b) + 1;
    const OroMM::WordArray* const large = bvwordsLarge_;
    if (next >= bitCount()) [[unlikely]]
      return b < -1 ? firstClear() : -1;
    if (isSmall()) return nextClearIn(bvwords_, next >> 5, next);
    const uint32_t* const block = large->BlockAt(static_cast<int32_t>(next >> 16));
    return block != nullptr ? nextClearIn(block, placeInBlock(next), next) : asIndex(next);
  }
  // The same strictly before b; above the maximum bit they begin with that bit itself.
  int32_t PrevSet(int32_t b) const { return scanBackward(b, 0); }
  int32_t PrevClear(int32_t b) const { return scanBackward(b, UINT32_MAX); }
  // Calls visit(i) for each set bit, upwards. It may clear the bit that it is given.
  template <class Visit>
  void ForEachSet(Visit&& visit) const;
  // Calls visit(bits, i) for the 64 bits from each multiple i of 64 on, upwards, where one of them
  // is set.
  template <class Visit>
  void ForEachPair(Visit&& visit) const;

  // The number of set bits, noted once it is counted; Recount counts whatever is known. Where all
  // bits of the whole range are set, that is one more than they can tell: INT32_MAX, and not noted.
  int32_t CountSet() const;
  int32_t Recount();
  // Of those behind b, and of those below b; the latter is 0 when bit 0 is set, kept for those who
  // count items, who have none there.
  int32_t CountAfter(int32_t b) const;
  int32_t CountBelow(int32_t b) const;
  // Cuts the set bits into runs of about equal size: first[j] is the bit that run j begins with,
  // start[j] the number of set bits ahead of it. Both have parts + 1 elements; the last ones are -1
  // and the count. Fewer than one part: nothing.
  void Partition(int32_t parts, int32_t* first, int32_t* start) const;

  // Word by word; what one of two vectors lacks counts as zeros. Behind those that change this
  // vector the count is not known, unless told otherwise.
  bool operator==(const BitVector& other) const;
  bool Disjoint(const BitVector& other) const;
  // An empty `other` is Zero.
  BitVector& operator&=(const BitVector& other) {
    return mergeShort<bitwords::Conjoin>(other) ? *this : conjoin(other);
  }
  // Grows to the last word of `other` that has bits, as the one below does.
  BitVector& operator|=(const BitVector& other) {
    return mergeShort<bitwords::Unite>(other) ? *this : unite(other);
  }
  BitVector& operator^=(const BitVector& other) {
    return mergeShort<bitwords::Differ>(other) ? *this : differ(other);
  }
  // This and not the other.
  BitVector& operator-=(const BitVector& other) {
    return mergeShort<bitwords::Subtract>(other) ? *this : subtract(other);
  }
  BitVector& operator&=(const BlockBitVector& other);
  BitVector& operator|=(const BlockBitVector& other);
  BitVector& operator^=(const BlockBitVector& other);
  BitVector& operator-=(const BlockBitVector& other);
  // As assignment, in the storage that this vector has.
  void CopyValues(const BitVector& other);
  // All words, bit 0 and the spare bits of the last one included.
  void Not();
  // Makes room for n and flips the bits 1 to n.
  void Complement(int32_t n) {
    const bool hasRoom = n >> 5 == maximumBit_ >> 5;
    if (!hasRoom || n < 0 || n >= shortBits) return complementSlowly(n);
    flipItems(bvwords_, n);
    numSet_ = -1;
  }
  // Makes room for n, sets the bits 1 to n and clears all others. The count is n.
  void SetAll(int32_t n);
  // Sets all bits but bit 0. The count is the maximum bit.
  void SetCapacity();
  // Clears all bits. The count is 0.
  void Zero();
  // Both ends included; false when `from` is above the maximum bit, where the range ends.
  bool ClearRange(int32_t from, int32_t to);
  bool SetRange(int32_t from, int32_t to);
  // Moves every bit up by n and makes room for all. Below 1: nothing.
  void Shift(int32_t n);

  // For each entry m of the map that is not 0, at i: this vector's bit m becomes what the operation
  // makes of it and of the other's bit i. An entry that comes twice is done twice.
  void AndMapped(const BitVector& other, const OroMM::IntArray& map);
  void OrMapped(const BitVector& other, const OroMM::IntArray& map);
  void XorMapped(const BitVector& other, const OroMM::IntArray& map);
  void MinusMapped(const BitVector& other, const OroMM::IntArray& map);
  void FlipMapped(const OroMM::IntArray& map);
  void CopyMapped(const BitVector& other, const OroMM::IntArray& map);

  // The bits at the places of the mask move to the places 1, 2, 3 and so on, and the vector ends
  // behind them.
  void Compact(const BitVector& mask);
  // The bit at i moves to map[i]; where that is 0 it is cleared. The vector ends at the last
  // target. For maps that only move downwards.
  void Remap(const OroMM::IntArray& map);
  // The same for a permutation: no bit is lost, and the vector never ends earlier. Bit 0 may stay.
  void Permute(const OroMM::IntArray& map);
  // Deletes the places of the mask; those behind move down. The last place that is left is cleared
  // as well, even by an empty mask: callers keep a spare bit there.
  void RemoveMasked(const BitVector& mask);

  // Keeps trunc(count * fraction + 0.5) of the set bits, each as likely as the others. One number
  // below the rest is drawn for each set bit. Without a source, equal sets keep equal bits: the
  // service IOroRandom, or a generator of its own, starts from the count.
  void KeepRandom(double fraction, IOroRandom* random);
  // Keeps n of the set bits, evenly spread.
  void KeepEvenly(int32_t n);

  // Makes room for `newMaximum`, at least 31; room that is no longer needed goes. Growth doubles.
  void Resize(int32_t newMaximum);

  // A chunk: the tag, then the words, or the set bits where they are few.
  static bool IsBitVectorTag(int32_t tag) { return tag == fileTag; }
  bool Write(BinOutput& output) const;
  // Another tag, or an end before the numbers at its head: false, and nothing changes. A chunk that
  // is damaged or ends later: false, and no bit is set. An unknown form is true and leaves the
  // vector without storage.
  bool Read(BinInput& input);
  // The count, then the set bits, eight to a line; Print on standard output and with an empty line.
  void Print() const;
  friend std::ostream& operator<<(std::ostream& out, const BitVector& bits);

 private:
  friend class BitVectorIter;
  friend class BlockBitVector;

  static constexpr int32_t fileTag = 0x315E97D6;
  static constexpr int32_t shortBits = 2048;  // up to here a call costs more than the work

  // Words that lie in one piece.
  struct Stretch {
    uint32_t* words;  // null: zeros without memory
    int32_t count;
  };

  uint32_t bitCount() const { return static_cast<uint32_t>(maximumBit_) + 1; }
  int32_t wordCount() const { return static_cast<int32_t>(bitCount() >> 5); }
  bool has(int32_t b) const { return static_cast<uint32_t>(b) < bitCount(); }
  // The word of a bit that there is room for; null where it has no memory.
  uint32_t* wordOf(uint32_t b) const {
    if (isSmall()) return bvwords_ + (b >> 5);
    uint32_t* const block = largeBlock(b);
    return block != nullptr ? block + placeInBlock(b) : nullptr;
  }
  // The compiler is told that it is open, and makes no detour of large vectors.
  bool isSmall() const { return __builtin_expect_with_probability(bvwords_ != nullptr, 1, 0.4); }
  uint32_t* largeBlock(uint32_t b) const {
    return bvwordsLarge_->BlockAt(static_cast<int32_t>(b >> 16));
  }
  // Two instructions: the compiler would make a shift and a mask of it, which are three.
  static_assert(OroMM::WordArray::perBlock * 32 == 1 << 16);
  static uint32_t placeInBlock(uint32_t b) { return bitwords::anew(static_cast<uint16_t>(b)) >> 5; }
  // The first set bit from `next` on, whose word stands at `place` of these. The very next one is
  // guessed: a walk over a full stretch need not wait for its words. Instructions count there, so
  // what the other ways need is worked out on them.
  int32_t nextSetIn(const uint32_t* words, uint32_t place, uint32_t next) const {
    const uint32_t word = words[place];
    if ((word & 1U << (next & 31)) != 0) [[likely]]
      return asIndex(next);
    const uint32_t rest = word >> (bitwords::anew(next) & 31);
    return rest != 0 ? asIndex(next + static_cast<uint32_t>(std::countr_zero(rest)))
                     : scanForward<0>(words, place, next);
  }
  int32_t nextClearIn(const uint32_t* words, uint32_t place, uint32_t next) const {
    const uint32_t rest = ~words[place] >> (next & 31);
    return rest != 0 ? asIndex(next + static_cast<uint32_t>(std::countr_zero(rest)))
                     : scanForward<UINT32_MAX>(words, place, next);
  }
  // Tells the compiler that a bit which there is room for is never below 0.
  static int32_t asIndex(uint32_t b) {
    if (b > INT32_MAX) __builtin_unreachable();
    return static_cast<int32_t>(b);
  }
  // From a word on, as far as they lie in one piece before `end`.
  Stretch stretch(int32_t word, int32_t end) const;
  // Whether the bit changes is anybody's guess, so they count it without a branch. Each step less
  // is worth something: where the word comes from afar, the processor looks ahead so much farther.
  void setIn(uint32_t* words, uint32_t place, uint32_t b) {
    uint32_t word = words[place];
    if (numSet_ >= 0) [[likely]] {
      bitwords::setAndCount(word, b, numSet_);
    } else {
      word |= 1U << (b & 31);
    }
    words[place] = word;
  }
  // One more than the largest number becomes a negative one, which is not known.
  void addToCount(uint32_t more) {
    numSet_ = static_cast<int32_t>(static_cast<uint32_t>(numSet_) + more);
  }
  void clearIn(uint32_t& word, int32_t b) {
    const uint32_t old = word;
    word = old & ~(1U << (b & 31));
    if (numSet_ >= 0) numSet_ -= static_cast<int32_t>(word < old);
  }
  void setSlowly(int32_t b);
  // Pure, so that a loop of NextSet need not load again where the words are.
  template <uint32_t skipped>
  [[gnu::pure]] int32_t scanForward(const uint32_t* words, uint32_t place, uint32_t from) const;
  [[gnu::pure, gnu::noinline]] int32_t scanFar(int32_t word, int32_t end, uint32_t skipped) const;
  [[gnu::pure]] int32_t scanBackward(int32_t b, uint32_t skipped) const;
  [[gnu::pure]] int32_t firstSet() const;
  [[gnu::pure]] int32_t firstClear() const;

  // Storage.
  void makeStorage(int64_t words);
  void dropStorage();
  void becomeOneWord();
  void takeSmall(const BitVector& other);
  void makeSmall(int32_t words);
  void makeLarge(int32_t needed, int32_t grown);
  void resizeLarge(int32_t words);
  void growToWord(int32_t last);

  // Words.
  uint32_t* makeWord(int32_t word);
  uint32_t wordAt(int32_t word) const;
  void maskWord(int32_t word, uint32_t kept, uint32_t flipped);
  void readWords(int64_t word, uint32_t* to, int32_t count) const;
  void putWords(int32_t word, const uint32_t* from, int32_t count);
  void fillWords(int32_t from, int32_t to, bool set);
  void changeBits(int32_t from, int32_t to, bool set);
  void flipWords(int32_t count);
  int64_t countWords(int32_t from, int32_t to) const;
  int32_t lastUsedWord() const;
  bool isEmptyFrom(int32_t word) const;
  int32_t selectBit(int32_t word, int64_t rank) const;
  // Two vectors in one piece of the same few words, of which none is known to be empty; false, and
  // nothing is done, for all others. A vector of so few bits is never a large one.
  template <class Operation>
  bool mergeShort(const BitVector& other) {
    const int32_t maximum = maximumBit_;
    if (maximum != other.maximumBit_ || maximum >= shortBits) return false;
    if (numSet_ == 0 || other.numSet_ == 0) return false;
    bitwords::combine<Operation>(bvwords_, other.bvwords_, wordCount());
    numSet_ = -1;
    return true;
  }
  BitVector& conjoin(const BitVector& other);
  BitVector& unite(const BitVector& other);
  BitVector& differ(const BitVector& other);
  BitVector& subtract(const BitVector& other);
  void complementSlowly(int32_t n);
  static void flipItems(uint32_t* words, int32_t n);
  template <class Visit>
  bool forCommon(const BitVector& other, const Visit& visit) const;
  template <class Operation>
  void mergeWith(const BitVector& other);
  template <class Merge>
  void mergeBlocks(const BlockBitVector& other, const Merge& merge);
  template <class Change>
  void changeMapped(const OroMM::IntArray& map, const Change& change);
  int64_t gatherBits(const BitVector& mask, uint32_t flip, int32_t firstPlace);
  bool writeDense(BinOutput& output) const;
  bool writeSparse(BinOutput& output) const;
  bool readForm(BinInput& input, uint32_t words, int32_t form, int32_t count);
  bool readDense(BinInput& input);
  bool readSparse(BinInput& input, int32_t count);

  uint32_t* bvwords_ = nullptr;               // owned; null in a large vector
  OroMM::WordArray* bvwordsLarge_ = nullptr;  // owned; null in a small vector
  BinMagic* magic_;                           // owned; what its chunks begin with
  int32_t maximumBit_ = -1;
  mutable int32_t numSet_ = 0;  // set bits, or a negative number
};

inline BitVector::Stretch BitVector::stretch(int32_t word, int32_t end) const {
  if (bvwords_ != nullptr) return {bvwords_ + word, end - word};
  const int32_t place = word & OroMM::WordArray::mask;
  const int32_t inBlock = OroMM::WordArray::perBlock - place;
  uint32_t* const block = bvwordsLarge_->BlockAt(word >> OroMM::WordArray::shift);
  return {block != nullptr ? block + place : nullptr, inBlock < end - word ? inBlock : end - word};
}

// Flips the bits 1 to n. Each word is read as it was written the last time: where that is not so, a
// processor waits.
inline void BitVector::flipItems(uint32_t* words, int32_t n) {
  const int32_t last = n >> 5;
  const uint32_t inLast = UINT32_MAX >> (31 - (n & 31));
  if (last == 0) {
    words[0] ^= inLast & ~1U;
    return;
  }
  words[0] ^= ~1U;
  bitwords::invert(words + 1, last - 1);
  words[last] ^= inLast;
}

template <class Visit>
[[gnu::always_inline]] inline void BitVector::ForEachSet(Visit&& visit) const {
  const int32_t end = wordCount();
  if (isSmall()) return bitwords::forEachSet(bvwords_, end, 0, visit);
  for (int32_t word = 0; word < end;) {
    const Stretch part = stretch(word, end);
    if (part.words != nullptr) bitwords::forEachSet(part.words, part.count, word * 32, visit);
    word += part.count;
  }
}

template <class Visit>
[[gnu::always_inline]] inline void BitVector::ForEachPair(Visit&& visit) const {
  const int32_t end = wordCount();
  for (int32_t word = 0; word < end;) {
    const Stretch part = stretch(word, end);
    for (int32_t i = 0; part.words != nullptr && i < part.count; i += 2) {
      const uint64_t bits = bitwords::pairAt(part.words + i, i + 1 < part.count);
      if (bits != 0) visit(bits, (word + i) * 32);
    }
    word += part.count;
  }
}
