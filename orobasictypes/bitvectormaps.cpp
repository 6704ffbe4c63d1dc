// The operations of BitVector that move bits to other places, and those that thin it out.

#include <algorithm>
#include <cmath>

#include "interfaces/IOroRandom.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/sptr.h"
#include "orobasictypes/wordkernels.h"

namespace {

// What a vector without a source of random numbers takes: PCG with 32 bits of output, as published
// by M. O'Neill, and no bias from the range.
class OwnRandom {
 public:
  explicit OwnRandom(uint32_t seed) : state_(seed) { draw(); }

  int32_t next(int32_t n) {
    const auto range = static_cast<uint32_t>(n);
    const uint32_t surplus = (0U - range) % range;
    uint32_t value = draw();
    while (value < surplus) value = draw();
    return static_cast<int32_t>(value % range);
  }

 private:
  uint32_t draw() {
    const uint64_t old = state_;
    state_ = old * 6364136223846793005U + 1442695040888963407U;
    const auto mixed = static_cast<uint32_t>((old >> 18 ^ old) >> 27);
    return std::rotr(mixed, static_cast<int>(old >> 59));
  }

  uint64_t state_;
};

// The same numbers for the same count.
uint32_t seedFor(int32_t count) { return static_cast<uint32_t>(count) * 2 + 412; }

// Calls visit(i, map[i]) for the entries that are not 0, upwards.
template <class Visit>
void forEachEntry(const OroMM::IntArray& map, int32_t end, const Visit& visit) {
  constexpr int32_t perBlock = OroMM::IntArray::perBlock;
  for (int32_t start = 0; start < end; start += perBlock) {
    const int* const entries = map.Block(start / perBlock);
    if (entries == nullptr) continue;
    const int32_t count = std::min(perBlock, end - start);
    for (int32_t i = 0; i < count; ++i) {
      if (entries[i] != 0) visit(start + i, entries[i]);
    }
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Mapped forms

// change(i, wasSet) tells whether the bit that entry i names is set afterwards.
template <class Change>
void BitVector::changeMapped(const OroMM::IntArray& map, const Change& change) {
  forEachEntry(map, map.Size(), [&](int32_t i, int32_t target) {
    if (change(i, Test(target))) {
      Set(target);
    } else {
      Clear(target);
    }
  });
  numSet_ = -1;
}

void BitVector::AndMapped(const BitVector& other, const OroMM::IntArray& map) {
  changeMapped(map, [&](int32_t i, bool wasSet) { return wasSet && other.Test(i); });
}

void BitVector::OrMapped(const BitVector& other, const OroMM::IntArray& map) {
  changeMapped(map, [&](int32_t i, bool wasSet) { return wasSet || other.Test(i); });
}

void BitVector::XorMapped(const BitVector& other, const OroMM::IntArray& map) {
  changeMapped(map, [&](int32_t i, bool wasSet) { return wasSet != other.Test(i); });
}

void BitVector::MinusMapped(const BitVector& other, const OroMM::IntArray& map) {
  changeMapped(map, [&](int32_t i, bool wasSet) { return wasSet && !other.Test(i); });
}

void BitVector::FlipMapped(const OroMM::IntArray& map) {
  changeMapped(map, [](int32_t, bool wasSet) { return !wasSet; });
}

void BitVector::CopyMapped(const BitVector& other, const OroMM::IntArray& map) {
  changeMapped(map, [&](int32_t i, bool) { return other.Test(i); });
}

// ---------------------------------------------------------------------------------------------
// Index changes

// Moves the bits at the places of the mask, or with a flip of all ones at the others, together from
// `firstPlace` on, clears what lies behind them and returns the place behind the last one. Bits
// before `firstPlace`, at most one, stay. Requires: no bit moves upwards.
int64_t BitVector::gatherBits(const BitVector& mask, uint32_t flip, int32_t firstPlace) {
  constexpr int32_t piece = 1024;
  uint32_t values[piece];
  uint32_t places[piece];
  uint32_t gatheredWords[piece];
  const int32_t words = wordCount();
  GatheredBits gathered;
  gathered.count = firstPlace;
  gathered.bits = wordAt(0) & ((1U << firstPlace) - 1);
  int32_t next = 0;  // word that the next gathered one becomes
  const int32_t end = flip != 0 ? words : mask.wordCount();
  for (int32_t word = 0; word < end; word += piece) {
    const int32_t count = std::min(piece, end - word);
    mask.readWords(word, places, count);
    if (flip == 0 && wordKernels().firstOther(places, count, 0) == count) continue;
    readWords(word, values, count);
    const auto made = static_cast<int32_t>(
        wordKernels().gather(values, places, flip, count, gathered, gatheredWords));
    // A mask may reach beyond this vector, where all its bits are clear.
    if (next < words) putWords(next, gatheredWords, std::min(made, words - next));
    next += made;
  }
  if (next < words) {
    const auto rest = static_cast<uint32_t>(gathered.bits);
    putWords(next, &rest, 1);
    fillWords(next + 1, words, false);
  }
  numSet_ = -1;
  return int64_t{next} * 32 + gathered.count;
}

void BitVector::Compact(const BitVector& mask) {
  if (maximumBit_ < 0) return;
  // In order and in place, bit 0 moves on top of those that were to move next, as far as the mask
  // has no gap.
  if (mask.Test(0)) {
    const bool bit = Test(0);
    const int32_t gap = mask.NextClear(0);
    const int32_t last = gap < 0 ? mask.maximumBit_ : gap - 1;
    if (bit && last >= maximumBit_ && last < INT32_MAX) Resize(last + 1);
    changeBits(0, std::min(last, maximumBit_), bit);
  }
  const int64_t last = gatherBits(mask, 0, 1) - 1;
  Resize(static_cast<int32_t>(std::min<int64_t>(last, INT32_MAX)));
}

void BitVector::RemoveMasked(const BitVector& mask) {
  if (maximumBit_ < 0) return;
  const auto last = static_cast<int32_t>(gatherBits(mask, UINT32_MAX, 0) - 1);
  if (last < maximumBit_ / 2) Resize(last);
  ClearRange(last, maximumBit_);
}

void BitVector::Remap(const OroMM::IntArray& map) {
  const auto end = static_cast<int32_t>(std::min<int64_t>(map.Size(), bitCount()));
  int32_t last = -1;  // the target of the last entry
  int32_t next = 0;   // entries before it are done
  forEachEntry(map, end, [&](int32_t i, int32_t target) {
    if (next < i) changeBits(next, i - 1, false);
    next = i + 1;
    last = target;
    if (target == i || !Test(i)) return;
    Clear(i);
    Set(target);
  });
  if (next < end) changeBits(next, end - 1, false);
  if (last >= 0) Resize(last);
  numSet_ = -1;
}

void BitVector::Permute(const OroMM::IntArray& map) {
  const auto end = static_cast<int32_t>(std::min<int64_t>(map.Size(), bitCount()));
  if (end > 0) {
    const BitVector old(*this);
    changeBits(0, end - 1, false);
    if (map.Get(0) == 0 && old.Test(0)) Set(0);
    for (int32_t i = old.NextSet(-1); i >= 0 && i < end; i = old.NextSet(i)) {
      if (map.Get(i) != 0) Set(map.Get(i));
    }
  }
  numSet_ = -1;
}

// ---------------------------------------------------------------------------------------------
// Thinning

void BitVector::KeepRandom(double fraction, IOroRandom* random) {
  const int32_t count = CountSet();
  IPtr<IOroRandom> service;
  if (random == nullptr) {
    service = SPtr<IOroRandom>();
    if (service) service->seed(seedFor(count));
  }
  // The caller's is not held: if it belongs to nobody yet, it would not outlive that.
  IOroRandom* const source = random != nullptr ? random : service.get();
  OwnRandom own(seedFor(count));
  const double kept = count * fraction + 0.5;
  // More than all, fewer than none and no number at all are within these.
  int32_t wanted = kept > 0 ? static_cast<int32_t>(std::min<double>(kept, count)) : 0;
  int32_t remaining = count;
  ForEachSet([&](int32_t b) {
    const int32_t drawn = source != nullptr ? source->next(remaining) : own.next(remaining);
    if (drawn < wanted) {
      --wanted;
    } else {
      Clear(b);
    }
    if (remaining > 1) --remaining;  // a count that cannot be told ends too early
  });
}

void BitVector::KeepEvenly(int32_t n) {
  const int32_t count = CountSet();
  if (count <= n) return;
  int64_t error = count / 2;
  ForEachSet([&](int32_t b) {
    error += n;
    if (error < count) {
      Clear(b);
    } else {
      error -= count;
    }
  });
}
