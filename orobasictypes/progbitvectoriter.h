// ProgBitVectorIter: walks a vector and reports about a hundred times on the way how far it is.
//
//   ProgBitVectorIter walk(selected, true);
//   for (int32_t b = walk.Next(); b >= 0; b = walk.Next()) use(b);
//
// Reports to the service IOroProgress, if there is one, and does not ask whether to stop. The end
// of this object is the end of the work. The vector is not owned. One thread.
#pragma once

#include <cstdint>

class BitVector;
class IOroProgress;

class ProgBitVectorIter {
 public:
  // Over the set bits, or over the clear ones.
  ProgBitVectorIter(const BitVector& bits, bool set);
  ProgBitVectorIter(const ProgBitVectorIter&) = delete;
  ProgBitVectorIter& operator=(const ProgBitVectorIter&) = delete;
  virtual ~ProgBitVectorIter();

  // The next bit, -1 at the end.
  int32_t Next();
  int32_t Current() const { return current_; }
  // Goes on with another vector, behind the current bit.
  void Attach(const BitVector& bits);

 private:
  using Walk = int32_t (BitVector::*)(int32_t) const;

  const BitVector* bits_ = nullptr;
  int32_t current_ = -1;
  const Walk walk_;
  IOroProgress* const progress_;  // borrowed, may be null
  int64_t nextReport_ = 0;        // the bit from which on there is one
  int32_t step_ = 1;              // bits
};
