// BitModel: a vector of bits as simply as it can be written, to compare BitVector with: one bool
// for each bit there is room for, and the rule by which that room changes, word for word.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"

namespace tests {

class BitModel {
 public:
  BitModel(int32_t maximumBit, bool hasManager) : hasManager_(hasManager) {
    const int64_t words = std::max(maximumBit >> 5, 0) + 1;
    large_ = words >= 4096 && hasManager;
    if (large_) arrayWords_ = (words + 2047) / 2048 * 2048;
    bits.assign(static_cast<size_t>(words * 32), false);
  }

  int32_t maximum() const { return static_cast<int32_t>(bits.size()) - 1; }
  int64_t words() const { return static_cast<int64_t>(bits.size()) / 32; }
  bool isLarge() const { return large_; }
  bool test(int64_t b) const {
    return b >= 0 && b <= maximum() && bits[static_cast<size_t>(b)] != 0;
  }
  void set(int64_t b) {
    if (b < 0) return;
    if (b > maximum()) resize(b);
    bits[static_cast<size_t>(b)] = true;
  }
  void clear(int64_t b) {
    if (b >= 0 && b <= maximum()) bits[static_cast<size_t>(b)] = false;
  }
  void assign(int64_t b, bool value) {
    if (value) {
      set(b);
    } else {
      clear(b);
    }
  }
  int32_t count() const { return static_cast<int32_t>(std::count(bits.begin(), bits.end(), true)); }
  int64_t lastUsedWord() const {
    for (int64_t b = maximum(); b >= 0; --b) {
      if (bits[static_cast<size_t>(b)]) return b / 32;
    }
    return -1;
  }

  void resize(int64_t newMaximum) {
    const int64_t wanted = std::max<int64_t>(newMaximum, 31);
    const int64_t present = maximum();
    if (wanted == present) return;
    int64_t target = wanted;
    if (wanted > present) {
      target = present;
      do {
        target *= 2;
      } while (target <= wanted);
    }
    const int64_t old = words();
    const int64_t grown = target / 32 + 1;
    const int64_t needed = wanted / 32 + 1;
    if (old == needed) return;
    if (large_ && needed < 1536 && needed <= old) {
      large_ = false;
      setWords(needed);
    } else if (large_) {
      arrayWords_ = ((needed > old ? grown : needed) + 2047) / 2048 * 2048;
      setWords(arrayWords_);
    } else if (needed >= 4097 && needed > old) {
      large_ = hasManager_;
      arrayWords_ = (grown + 2047) / 2048 * 2048;
      setWords(large_ ? arrayWords_ : grown);
    } else {
      setWords(std::max(needed, std::min<int64_t>(grown, 6144)));
    }
  }
  // As operator= of the real one: a buffer that is large enough stays.
  void operator=(const BitModel& other) {
    if (this == &other) return;
    const size_t kept =
        !large_ && !other.large_ && bits.size() > other.bits.size() ? bits.size() : 0;
    bits = other.bits;
    if (kept != 0) bits.resize(kept, false);
    large_ = other.large_;
    arrayWords_ = other.arrayWords_;
  }
  BitModel(const BitModel&) = default;
  // Room for so many words in the storage that it has.
  void makeRoom(int64_t count) {
    if (count <= words()) return;
    if (large_) arrayWords_ = count = (count + 2047) / 2048 * 2048;
    setWords(count);
  }
  void swapKind(BitModel& other) {
    std::swap(large_, other.large_);
    std::swap(arrayWords_, other.arrayWords_);
  }

  std::vector<char> bits;  // 0 or 1

 private:
  void setWords(int64_t count) { bits.resize(static_cast<size_t>(count * 32), false); }

  bool hasManager_;
  bool large_ = false;
  int64_t arrayWords_ = 0;
};

// Whether both hold the same; what is known of the count must be right.
inline testing::AssertionResult agree(const BitVector& real, const BitModel& model) {
  if (real.MaximumBit() != model.maximum()) {
    return testing::AssertionFailure()
           << "maximum bit " << real.MaximumBit() << ", not " << model.maximum();
  }
  if (real.IsLarge() != model.isLarge()) return testing::AssertionFailure() << "kind of storage";
  const char* const bits = model.bits.data();
  for (int32_t b = 0; b <= model.maximum(); ++b) {
    if (real.Test(b) != (bits[b] != 0)) return testing::AssertionFailure() << "bit " << b;
  }
  if (real.KnownCount() != -1 && real.KnownCount() != model.count()) {
    return testing::AssertionFailure()
           << "count " << real.KnownCount() << ", not " << model.count();
  }
  return testing::AssertionSuccess();
}

// The set bits.
inline std::vector<int32_t> setBits(const BitVector& bits) {
  std::vector<int32_t> result;
  for (int32_t b = bits.NextSet(-1); b >= 0; b = bits.NextSet(b)) result.push_back(b);
  return result;
}

inline BitVector bitsOf(const std::vector<int32_t>& set, int32_t maximumBit = 0) {
  BitVector bits(maximumBit);
  for (const int32_t b : set) bits.Set(b);
  return bits;
}

}  // namespace tests
