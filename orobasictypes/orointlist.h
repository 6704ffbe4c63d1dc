// OroIntList: a plain growing list of integers that are numbered from 1; slot 0 is unused.
//
//   OroIntList open(41);
//   open.Add(first);
//   while (open.Count() > 0) visit(open.Take());
//
// The list owns its slots. No locks: the owner guards it.
#pragma once

#include <cstdint>

#include "orobasictypes/kelgrow.h"
#include "orobasictypes/kelrealloc.h"

class BitVector;

class OroIntList {
 public:
  // `capacity` in slots, slot 0 among them.
  explicit OroIntList(int32_t capacity = 0) { Reserve(capacity); }
  // The set bits of a vector, upwards.
  explicit OroIntList(const BitVector& bits);
  OroIntList(const OroIntList&) = delete;
  OroIntList& operator=(const OroIntList&) = delete;
  ~OroIntList() { kelFree(elements_); }

  int32_t Count() const { return count_; }
  int32_t Capacity() const { return capacity_; }
  // Requires: 1 <= i <= Count().
  int32_t Get(int32_t i) const { return elements_[i]; }
  void Set(int32_t i, int32_t value) { elements_[i] = value; }
  int32_t* begin() { return elements_ + (elements_ != nullptr); }
  int32_t* end() { return begin() + count_; }
  const int32_t* begin() const { return elements_ + (elements_ != nullptr); }
  const int32_t* end() const { return begin() + count_; }

  void Add(int32_t value) {
    if (count_ + 1 >= capacity_) Reserve(count_ + 2);
    elements_[++count_] = value;
  }
  // Takes the last one off. Requires: one.
  int32_t Take() { return elements_[count_--]; }
  void Clear() { count_ = 0; }
  // Slots for so many, slot 0 among them; never fewer than there are.
  void Reserve(int32_t slots) {
    if (slots <= capacity_) return;
    capacity_ =
        kelRealloc(elements_, sizeof(int32_t), capacity_, slots, kelGrowSize(capacity_, slots));
  }

 private:
  int32_t capacity_ = 0;  // slots
  int32_t* elements_ = nullptr;
  int32_t count_ = 0;
};
