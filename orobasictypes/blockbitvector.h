// BlockBitVector: a set of bits for large ranges with long runs of equal bits.
//
//   BlockBitVector visible(maximumBit);
//   visible.Set(17);
//   selected &= visible;  // a BitVector
//
// The bits lie in blocks of 32768. A block that is all clear or all set needs no memory and is
// passed in one step. Blocks that nobody needs wait in a pool of the process, 512 at most. The
// number of set bits is known or -1, of each block as well. Indices below 0 name no bit.
//
// The vector owns its tables, and its blocks together with its copies: the first that changes a
// block copies it. Copies are independent, on several threads as well. One vector may be read and
// copied on several threads while nobody writes, but CountSet may note what it found. Only the pool
// has a lock.
#pragma once

#include <cstdint>

#include "orobasictypes/bitwords.h"
#include "orobasictypes/oroshared.h"

class BitVector;
struct WordOutline;

class BlockBitVector : public OroShared {
 public:
  class Iterator;
  static constexpr int32_t kBlockBits = 32768;
  static constexpr int32_t kBlockWords = kBlockBits / 32;

  // Empty. The last block is the one of `maximumBit`, but for a remainder: that one comes when a
  // bit of it is set.
  explicit BlockBitVector(int32_t maximumBit = 0);
  explicit BlockBitVector(const BitVector& bits);
  BlockBitVector(const BlockBitVector& other);
  // Leaves the other without blocks: it is empty, and grows again.
  BlockBitVector(BlockBitVector&& other) noexcept;
  // What the other has; a longer table stays.
  BlockBitVector& operator=(const BlockBitVector& other);
  BlockBitVector& operator=(const BitVector& bits);
  ~BlockBitVector() override;

  // The index of the last block; -1 when there is none.
  int32_t LastBlock() const { return lastBlock_; }
  // The number of set bits, or -1 when it is not known; of a block as well.
  int32_t KnownCount() const { return numSet_; }
  int32_t BlockCount(int32_t block) const { return counts_[block]; }
  bool HasMemory(int32_t block) const { return blocks_[block] != nullptr; }

  // Behind the last block Test is false, Clear does nothing and Set makes room.
  bool Test(int32_t b) const {
    const int32_t block = b >> 15;
    if (static_cast<uint32_t>(block) > static_cast<uint32_t>(lastBlock_) || lastBlock_ < 0) {
      return false;
    }
    if (counts_[block] == 0 || counts_[block] == kBlockBits) return counts_[block] != 0;
    return (blocks_[block][b >> 5 & (kBlockWords - 1)] >> (b & 31) & 1) != 0;
  }
  // Whether that changed the bit.
  bool Set(int32_t b);
  bool Clear(int32_t b);

  // The first set bit behind b, from bit 0 for b below 0; -1 when there is none.
  int32_t NextSet(int32_t b) const;
  // Calls visit(i) for each set bit, upwards. It must not change the vector.
  template <class Visit>
  void ForEachSet(Visit&& visit) const;
  // The number of set bits, noted once it is counted; Recount adds up the blocks whatever is known.
  // Where all bits of the whole range are set, that is one more than they can tell: INT32_MAX, and
  // not noted.
  int32_t CountSet() const;
  int32_t Recount() const;

  // Counts both, then compares.
  bool operator==(const BlockBitVector& other) const;
  // Block by block; the count is not known afterwards.
  BlockBitVector& operator&=(const BlockBitVector& other);
  BlockBitVector& operator|=(const BlockBitVector& other);
  BlockBitVector& operator^=(const BlockBitVector& other);
  BlockBitVector& operator-=(const BlockBitVector& other);  // this and not the other
  BlockBitVector& operator&=(const BitVector& other);
  BlockBitVector& operator|=(const BitVector& other);
  BlockBitVector& operator^=(const BitVector& other);
  BlockBitVector& operator-=(const BitVector& other);

 private:
  friend class BitVector;
  class Pool;
  class PoolHold;  // the pool, locked

  struct Note;

  // A block of an operand. The count decides; where it is neither 0 nor all, the words are there.
  struct View {
    int32_t count;
    const uint32_t* words;
    const BlockBitVector* vector;  // whose block that is; null: nobody's

    bool isEmpty() const { return count == 0; }
    bool isFull() const { return count == kBlockBits; }
    bool isUniform() const { return isEmpty() || isFull(); }
  };

  View view(int32_t block) const;
  static View viewOf(const BitVector& bits, int32_t block, uint32_t* buffer);
  int32_t lastUsedBlock() const;
  int32_t lastUsedWord() const;
  int32_t populationOf(int32_t block) const;
  void growTables(int32_t lastBlock);
  Note** notes() const;
  Note& noteOf(int32_t block) const;
  WordOutline outlineOf(int32_t block) const;
  void makeUniform(PoolHold& pool, int32_t block, bool full);
  void giveUp(PoolHold& pool, int32_t block);
  void share(PoolHold& pool, int32_t block, const BlockBitVector& other);
  uint32_t* freshWords(PoolHold& pool, int32_t block);
  uint32_t* ownWords(PoolHold& pool, int32_t block);
  uint32_t* openWords(int32_t block, int fill);
  void settle(PoolHold& pool, int32_t block);
  void take(PoolHold& pool, int32_t block, const View& theirs, bool inverted);
  template <class Operation>
  void combineBlock(PoolHold& pool, int32_t block, const View& theirs);
  template <class Operation>
  void combineMixed(PoolHold& pool, int32_t block, const View& theirs);
  template <class Operation>
  void combineLines(PoolHold& pool, int32_t block, const View& theirs, uint64_t open);
  template <class Operation>
  void combine(const BlockBitVector& other);
  template <class Operation>
  void combine(const BitVector& other);

  uint32_t** blocks_ = nullptr;  // null: all bits of the block are equal; the notes lie behind
  int32_t* counts_ = nullptr;    // set bits of each block, -1: not known, and it has memory
  int32_t lastBlock_ = -1;
  mutable int32_t numSet_ = 0;  // set bits, or -1
};

// Walks the set bits of a vector that lives longer and does not change.
//
//   for (BlockBitVector::Iterator i(bits); i.First(), !i.AtEnd(); i.Next()) use(i.Current());
class BlockBitVector::Iterator {
 public:
  explicit Iterator(const BlockBitVector& bits) : bits_(&bits) {}
  explicit Iterator(BlockBitVector&&) = delete;

  void First() { current_ = bits_->NextSet(-1); }
  void Next() { current_ = bits_->NextSet(current_); }
  bool AtEnd() const { return current_ == -1; }
  int32_t Current() const { return current_; }

 private:
  const BlockBitVector* bits_;
  int32_t current_ = -1;
};

template <class Visit>
[[gnu::always_inline]] inline void BlockBitVector::ForEachSet(Visit&& visit) const {
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    const int32_t base = block * kBlockBits;
    if (counts_[block] == kBlockBits) {
      for (int32_t i = 0; i < kBlockBits; ++i) visit(base + i);
    } else if (counts_[block] != 0) {
      bitwords::forEachSet(blocks_[block], kBlockWords, base, visit);
    }
  }
}
