// OroMM::Array: a split array of one type of element, for millions of them.
//
//   OroMM::IntArray index(count);  // reads as 0 everywhere, and has no memory for it
//   index.Set(7, 42);
//   for (int32_t i = 0; i < index.Size(); ++i) sum += index.Get(i);
//
// The splitter says how many elements a block holds. Reading never makes a block, writing a zero
// does not either. Loops over much go block by block (Block). See arraybase.h for who owns what and
// for threads.
#pragma once

#include <cstdint>
#include <type_traits>

#include "orobasictypes/arraybase.h"
#include "orobasictypes/orovector.h"

// How words of bits are split; see OroMM::Splitter.
struct BitVectorSplitter {
  static constexpr int shift = 11;
};

namespace OroMM {

// Elements of a block: 1 shifted left by `shift`. A vector's block is one page of the memory
// manager, 24 KiB, that of an integer or a word of bits a third of one.
template <class T>
struct Splitter;
template <>
struct Splitter<OroVector> {
  static constexpr int shift = 10;
};
template <>
struct Splitter<int> {
  static constexpr int shift = 11;
};

// The largest index that an array is made for, where others give the number of elements.
struct LargestIndex {
  int32_t value;
};

template <class T, class Split>
class Array : public ArrayBase {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  static constexpr int shift = Split::shift;
  static constexpr int32_t perBlock = 1 << shift;
  static constexpr int32_t mask = perBlock - 1;
  static constexpr int32_t blockBytes = perBlock * static_cast<int32_t>(sizeof(T));

  Array() : ArrayBase(0, sizeof(T), perBlock, blockBytes) {}
  // Whole blocks for `size` elements. Allocates none, whatever the flag says.
  explicit Array(int32_t size, bool zero = true)
      : ArrayBase(size, sizeof(T), perBlock, blockBytes) {
    InitBlocks(zero);
  }
  explicit Array(LargestIndex last) requires std::is_same_v<T, int>
      : Array(last.value < INT32_MAX ? last.value + 1 : last.value) {}
  Array(const Array& other) : Array() { Assign(other, other.Size()); }
  Array& operator=(const Array&) = delete;

  // Element i. Zero where nothing was written, and outside 0 to Size() - 1.
  const T& Get(int32_t i) const {
    if (static_cast<uint32_t>(i) >= static_cast<uint32_t>(Size())) return absent;
    const T* const elements = Block(i >> shift);
    return elements != nullptr ? elements[i & mask] : absent;
  }
  // Requires: i >= 0. Beyond the size the table grows, but the element reads as zero until the
  // array is resized, which may drop it: resize first.
  void Set(int32_t i, const T& value) {
    const int32_t block = i >> shift;
    if (block >= table_.count) [[unlikely]]
      GrowTable(block + 1);
    T* elements = Block(block);
    if (elements == nullptr) {
      if (value == T()) return;
      elements = MakeBlock(block);
    }
    elements[i & mask] = value;
  }
  // The element itself, its block being made when it is missing; the size stays. Requires: i >= 0.
  T& At(int32_t i) { return MakeBlock(i >> shift)[i & mask]; }

  // The elements of a block, null when it does not exist. Requires: block >= 0.
  const T* Block(int32_t block) const {
    return block < table_.count ? static_cast<const T*>(table_.blocks[block]) : nullptr;
  }
  T* Block(int32_t block) {
    return block < table_.count ? static_cast<T*>(table_.blocks[block]) : nullptr;
  }
  // The same without a question. Requires: 0 <= block < Table().count.
  T* BlockAt(int32_t block) const { return static_cast<T*>(table_.blocks[block]); }
  T* MakeBlock(int32_t block) { return static_cast<T*>(ArrayBase::MakeBlock(block)); }

 private:
  static constexpr T absent{};  // what reads of absent elements refer to
};

using VectorArray = Array<OroVector, Splitter<OroVector>>;
using IntArray = Array<int, Splitter<int>>;
using WordArray = Array<unsigned int, BitVectorSplitter>;

}  // namespace OroMM
