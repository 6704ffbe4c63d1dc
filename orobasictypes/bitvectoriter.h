// BitVectorIter: walks the set bits of a vector, where a visitor does not do.
//
//   for (BitVectorIter i(selected); !i.AtEnd(); i.Next()) use(i.Bit());
//
// The vector must live and keep its storage; the bit that the walk stands on may be cleared, others
// that change may be seen or not. One thread.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/wordkernels.h"

class BitVectorIter {
 public:
  // On the first set bit.
  explicit BitVectorIter(const BitVector& bits) : vector_(&bits) { findPair(); }

  explicit BitVectorIter(BitVector&&) = delete;

  bool AtEnd() const { return pair_ == 0; }
  // The set bit that the walk stands on, -1 at its end.
  int32_t Bit() const { return pair_ == 0 ? -1 : base_ + std::countr_zero(pair_); }
  // To the next one. Not at the end.
  [[gnu::always_inline]] void Next() {
    pair_ &= pair_ - 1;
    if (pair_ == 0) findPair();
  }

 private:
  static constexpr int32_t chunkSize = 128;

  // The next two words of which one has a bit, as far as there are any.
  [[gnu::always_inline]] void findPair() {
    while (pairs_ == 0) {
      if (nextWord_ >= vector_->wordCount()) return;
      nextChunk();
    }
    const int32_t i = std::countr_zero(pairs_) * 2;
    pairs_ &= pairs_ - 1;
    pair_ = bitwords::pairAt(chunk_ + i, chunkWord_ + i + 1 < nextWord_);
    base_ = (chunkWord_ + i) * 32;
  }
  [[gnu::always_inline]] void nextChunk() {
    const BitVector::Stretch part = vector_->stretch(nextWord_, vector_->wordCount());
    chunkWord_ = nextWord_;
    if (part.words == nullptr) {
      nextWord_ += part.count;
      return;
    }
    chunk_ = part.words;
    const int32_t count = std::min(part.count, chunkSize);
    nextWord_ += count;
    pairs_ = wordKernels().usedPairs(chunk_, count);
  }

  uint64_t pair_ = 0;   // of two words, the bit that the walk stands on and those still to come
  int32_t base_ = 0;    // the bit that these begin with
  uint64_t pairs_ = 0;  // pairs still to come of the chunk
  const uint32_t* chunk_ = nullptr;
  int32_t chunkWord_ = 0;
  int32_t nextWord_ = 0;  // behind the chunk
  const BitVector* vector_;
};
