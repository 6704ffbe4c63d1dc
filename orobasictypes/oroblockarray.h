// OroBlockArray: integers in a table of heap blocks, for long arrays that do without the memory
// manager.
//
//   OroBlockArray sizes(largestIndex);
//   for (int32_t i = 0; i < sizes.Size(); ++i) sizes.Set(i, 3);
//
// A block is a power of two elements, the last one only as long as it needs to be. The functions
// below work on tables of any type of element, by its size. The array owns its table. No locks.
#pragma once

#include <cstdint>

// The shift of a block of 16 KiB: how often an element doubles until it has that size at least.
constexpr uint32_t kelBlockShift(int32_t elementSize) {
  uint32_t shift = 0;
  for (int64_t bytes = elementSize < 1 ? 1 : elementSize; bytes < 16384; bytes *= 2) ++shift;
  return shift;
}

class OroBlockArray {
 public:
  // A table for `size` elements, in `capacity` blocks, and the end of one.
  static void Make(void**& table, int32_t elementSize, uint32_t shift, int32_t size,
                   int32_t& capacity, bool clear);
  static void Destroy(void**& table, uint32_t shift, int32_t size);
  // `size` is read and written. `maximum` selects how: below 0 the new size is taken as it is; 0
  // never shrinks, and grows to twice the size or a whole block; above 0 a size that has to change
  // becomes the maximum, even where that is below what is asked for. A new size below 0 is 0.
  static void Resize(void**& table, int32_t elementSize, uint32_t shift, int32_t& size,
                     int32_t newSize, int32_t maximum, int32_t& capacity, bool clear);
  // Zeroes all elements, if `clear` is set.
  static void ClearAll(void** table, int32_t elementSize, uint32_t shift, int32_t size, bool clear);
  // A new table of the same shape with the same contents.
  static void** Copy(void* const* table, int32_t elementSize, uint32_t shift, int32_t size,
                     int32_t& capacity);

  OroBlockArray() : OroBlockArray(-1) {}
  // For the indices 0 to `largest`, all 0. A shift of 0 asks for that of kelBlockShift.
  explicit OroBlockArray(int32_t largest, uint32_t shift = 0);
  OroBlockArray(const OroBlockArray& other);
  OroBlockArray& operator=(const OroBlockArray&) = delete;
  ~OroBlockArray() { Destroy(table_, shift_, size_); }

  int32_t Size() const { return size_; }
  uint32_t Shift() const { return shift_; }
  int32_t TableCapacity() const { return tableCapacity_; }

  // 0 outside 0 to Size() - 1.
  const int32_t& Get(int32_t i) const {
    if (static_cast<uint32_t>(i) >= static_cast<uint32_t>(size_)) return absent;
    return *at(i);
  }
  // Requires: 0 <= i < Size().
  void Set(int32_t i, int32_t value) { *at(i) = value; }
  void Resize(int32_t newSize, int32_t maximum, bool clear) {
    Resize(table_, sizeof(int32_t), shift_, size_, newSize, maximum, tableCapacity_, clear);
  }
  void ClearAll() { ClearAll(table_, sizeof(int32_t), shift_, size_, true); }

 protected:
  // Element i, and those behind it as far as its block goes. Requires: 0 <= i < Size().
  int32_t* at(int32_t i) const {
    return static_cast<int32_t*>(table_[i >> shift_]) + (static_cast<uint32_t>(i) & mask_);
  }

 private:
  static constexpr int32_t absent = 0;  // what reads beyond the size refer to

  int32_t size_ = 0;  // elements
  uint32_t shift_;
  uint32_t mask_;
  int32_t tableCapacity_ = 0;
  void** table_ = nullptr;
};
