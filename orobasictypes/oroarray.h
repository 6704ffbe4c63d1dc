// OroArray<T>: a growable array whose elements are numbered from 1.
//
//   OroArray<KelCString> names;
//   names.add(name);
//   for (int32_t i = 1; i <= names.count(); ++i) use(names[i]);
//
// The last index is kept apart from the capacity: touching an element makes room for it, but only
// add, insert and setCount move the last index. Element 0 exists and is not an item. Growing moves
// the elements, so no pointer to one survives it. No locks: the owner guards it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "orobasictypes/kelgrow.h"
#include "orobasictypes/kelrealloc.h"

template <class T>
class OroArray {
 public:
  OroArray() = default;
  // With room for the elements 0 to capacity - 1; none is an item yet.
  explicit OroArray(int32_t capacity) { moveTo(capacity); }
  OroArray(const OroArray& other);
  OroArray(OroArray&& other) noexcept { swap(other); }
  OroArray& operator=(const OroArray& other) {
    OroArray(other).swap(*this);
    return *this;
  }
  OroArray& operator=(OroArray&& other) noexcept {
    OroArray(std::move(other)).swap(*this);
    return *this;
  }
  ~OroArray() { free(); }

  // The last index; 0 when there is no item.
  int32_t count() const { return count_; }
  bool isEmpty() const { return count_ == 0; }
  // How many elements there is room for, element 0 included.
  int32_t capacity() const { return capacity_; }

  // Element i, made when it does not exist yet. A negative index gives element 0.
  T& operator[](int32_t i) {
    i = std::max(i, 0);
    if (i >= capacity_) reserve(int64_t{i} + 1);
    return elements_[i];
  }
  // Requires: 0 <= i < capacity().
  const T& operator[](int32_t i) const { return elements_[i]; }
  // The last item. Requires: one.
  T& last() { return elements_[count_]; }
  const T& last() const { return elements_[count_]; }
  // The items 1 to count().
  T* begin() { return elements_ + (elements_ != nullptr); }
  T* end() { return begin() + count_; }
  const T* begin() const { return elements_ + (elements_ != nullptr); }
  const T* end() const { return begin() + count_; }

  // Appends an item and returns its index.
  int32_t add(T value) {
    (*this)[count_ + 1] = std::move(value);
    return ++count_;
  }
  // Puts an item at i, 1 to count() + 1, and moves the items from there up by one.
  void insert(int32_t i, T value);
  // Takes item i out and moves the items behind it down by one. Outside 1 to count(): nothing.
  void remove(int32_t i);
  // Takes the last item off. Nothing when there is none.
  void pop() { remove(count_); }
  // Moves the last index alone; elements beyond it stay as they are. Below 0 counts as 0.
  void setCount(int32_t count) {
    count_ = std::max(count, 0);
    if (count_ > 0 && count_ >= capacity_) reserve(int64_t{count_} + 1);
  }
  // Room for `needed` elements at least, by the rule of kelGrowSize. New elements are T(). More
  // than an index can name are exhaustion.
  void reserve(int64_t needed);
  // Destroys all elements and gives the storage back.
  void clear() { OroArray().swap(*this); }
  void swap(OroArray& other) noexcept {
    std::swap(elements_, other.elements_);
    std::swap(capacity_, other.capacity_);
    std::swap(count_, other.count_);
  }

 private:
  void moveTo(int32_t capacity);  // a block of that many elements; smaller ones: nothing
  void free() {
    for (int32_t i = 0; i < capacity_; ++i) elements_[i].~T();
    kelFree(elements_);
  }

  T* elements_ = nullptr;  // capacity_ constructed elements
  int32_t capacity_ = 0;
  int32_t count_ = 0;  // the last index that is an item
};

template <class T>
OroArray<T>::OroArray(const OroArray& other) {
  moveTo(other.capacity_);
  for (int32_t i = 0; i < other.capacity_; ++i) elements_[i] = T(other.elements_[i]);
  count_ = other.count_;
}

template <class T>
void OroArray<T>::insert(int32_t i, T value) {
  i = std::clamp(i, 1, count_ + 1);
  reserve(int64_t{count_} + 2);
  for (int32_t to = ++count_; to > i; --to) elements_[to] = std::move(elements_[to - 1]);
  elements_[i] = std::move(value);
}

template <class T>
void OroArray<T>::remove(int32_t i) {
  if (i < 1 || i > count_) return;
  for (; i < count_; ++i) elements_[i] = std::move(elements_[i + 1]);
  elements_[count_--] = T();
}

template <class T>
void OroArray<T>::reserve(int64_t needed) {
  if (needed <= capacity_) return;
  if (needed > INT32_MAX) kelOutOfMemory(needed * int64_t{sizeof(T)});
  moveTo(kelGrowSize(capacity_, static_cast<int32_t>(needed)));
}

template <class T>
void OroArray<T>::moveTo(int32_t capacity) {
  static_assert(alignof(T) <= alignof(std::max_align_t));
  if (capacity <= capacity_) return;
  T* elements = nullptr;
  kelMalloc(elements, sizeof(T), capacity);
  for (int32_t i = 0; i < capacity_; ++i) new (&elements[i]) T(std::move(elements_[i]));
  for (int32_t i = capacity_; i < capacity; ++i) new (&elements[i]) T();
  free();
  elements_ = elements;
  capacity_ = capacity;
}
