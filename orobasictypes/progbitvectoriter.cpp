#include "orobasictypes/progbitvectoriter.h"

#include <algorithm>

#include "interfaces/IOroProgress.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/sptr.h"

ProgBitVectorIter::ProgBitVectorIter(const BitVector& bits, bool set)
    : walk_(set ? &BitVector::NextSet : &BitVector::NextClear),
      progress_(SPtr<IOroProgress>().get()) {
  Attach(bits);
}

ProgBitVectorIter::~ProgBitVectorIter() {
  if (progress_ != nullptr) progress_->Update(1.0F);
}

void ProgBitVectorIter::Attach(const BitVector& bits) {
  bits_ = &bits;
  nextReport_ = 0;
  step_ = std::max(bits.MaximumBit() / 100, 1);
}

int32_t ProgBitVectorIter::Next() {
  current_ = (bits_->*walk_)(current_);
  if (current_ >= nextReport_) {
    const auto whole = static_cast<float>(bits_->MaximumBit());
    if (progress_ != nullptr) progress_->Update(static_cast<float>(current_) / whole);
    nextReport_ = int64_t{current_} + step_;
  }
  return current_;
}
