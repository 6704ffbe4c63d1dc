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

class BitVectorIter {
 public:
  // On the first set bit.
  explicit BitVectorIter(const BitVector& bits) : vector_(&bits), end_(bits.wordCount()) { Next(); }

  explicit BitVectorIter(BitVector&&) = delete;

  bool AtEnd() const { return bit_ < 0; }
  // The set bit that the walk stands on, -1 at its end.
  int32_t Bit() const { return bit_; }
  // To the next one. Not at the end.
  void Next() {
    if (pair_ == 0 && !findPair()) {
      bit_ = -1;
      return;
    }
    bit_ = base_ + std::countr_zero(pair_);
    pair_ &= pair_ - 1;
  }

 private:
  static constexpr int32_t chunkSize = 64;

  // The next two words of which one has a bit.
  bool findPair() {
    while (pairs_ == 0) {
      if (chunkWord_ + chunkCount_ >= end_) return false;
      nextChunk();
    }
    const int32_t i = std::countr_zero(pairs_);
    pairs_ &= pairs_ - 1;
    pair_ = bitwords::pairAt(chunk_ + i, i + 1 < chunkCount_);
    base_ = (chunkWord_ + i) * 32;
    return true;
  }
  void nextChunk() {
    chunkWord_ += chunkCount_;
    const BitVector::Stretch part = vector_->stretch(chunkWord_, end_);
    if (part.words == nullptr) {
      chunkCount_ = part.count;
      return;
    }
    chunk_ = part.words;
    chunkCount_ = std::min(part.count, chunkSize);
    pairs_ = chunkCount_ == chunkSize ? bitwords::usedPairs(chunk_)
                                      : bitwords::usedPairs(chunk_, chunkCount_);
  }

  uint64_t pair_ = 0;  // bits still to come of two words
  int32_t base_ = 0;   // the bit that these begin with
  int32_t bit_ = -1;
  uint64_t pairs_ = 0;  // pairs still to come of the chunk
  const uint32_t* chunk_ = nullptr;
  int32_t chunkWord_ = 0;
  int32_t chunkCount_ = 0;  // words
  const BitVector* vector_;
  int32_t end_;  // words
};
