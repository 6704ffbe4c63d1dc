// PointPlaces<T>: one value for each place of a point array, place 0 among them, in one piece.
//
//   PointPlaces<uint32_t> colors;
//   colors.resize(count + 1);
//   colors[1] = 0xFF0000FF;
//
// New places are zero. Memory comes from the allocation layer, which never fails towards its
// caller. One thread.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "orobasictypes/array.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/kelgrowcapacity.h"
#include "orobasictypes/kelrealloc.h"

template <class T>
class PointPlaces {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  PointPlaces() = default;
  PointPlaces(const PointPlaces& other) { *this = other; }
  PointPlaces& operator=(const PointPlaces& other) {
    if (&other == this) return *this;
    resize(0);
    resize(other.count_);
    std::copy_n(other.values_, count_, values_);
    return *this;
  }
  ~PointPlaces() { kelFree(values_); }

  int32_t count() const { return count_; }
  T* data() { return values_; }
  const T* data() const { return values_; }
  T& operator[](int32_t i) { return values_[i]; }
  const T& operator[](int32_t i) const { return values_[i]; }

  void clear() {
    kelFree(values_);
    values_ = nullptr;
    count_ = capacity_ = 0;
  }
  // Below 0 is 0.
  void resize(int32_t count) {
    count = std::max(count, 0);
    if (count > capacity_) reserve(count);
    if (count > count_) std::fill(values_ + count_, values_ + count, T());
    count_ = count;
  }
  // Outside the places: as far as there are any.
  void remove(int32_t first, int32_t count) {
    if (first < 0 || first >= count_ || count < 1) return;
    const int32_t removed = std::min(count, count_ - first);
    std::copy(values_ + first + removed, values_ + count_, values_ + first);
    count_ -= removed;
  }
  // Behind the last place: nothing.
  void insert(int32_t first, int32_t count) {
    if (first < 0 || first > count_ || count < 1 || count > INT32_MAX - count_) return;
    const int32_t old = count_;
    resize(old + count);
    std::copy_backward(values_ + first, values_ + old, values_ + count_);
    std::fill_n(values_ + first, count, T());
  }
  // Place p takes the value at index[p], for the places from `first` to `last`.
  void permute(const OroMM::IntArray& index, int32_t first, int32_t last) {
    const PointPlaces old = *this;
    for (int32_t p = std::max(first, 0); p <= last && p < count_; ++p) {
      const int32_t from = index.Get(p);
      values_[p] = from >= 0 && from < count_ ? old[from] : T();
    }
  }
  // The values at the places of the mask move to the places from 1 on, which are the last ones
  // then.
  void compact(const BitVector& mask) {
    int32_t kept = 0;
    mask.ForEachSet([&](int32_t b) {
      if (b > 0 && b < count_) values_[++kept] = values_[b];
    });
    resize(std::min(kept + 1, count_));
  }
  // The value at i moves to map[i], for the places from 1 to `last`; 0 leaves it out.
  void reorder(const OroMM::IntArray& map, int32_t last) {
    const PointPlaces old = *this;
    for (int32_t i = 1; i <= last && i < count_; ++i) {
      const int32_t to = map.Get(i);
      if (to > 0 && to < count_) values_[to] = old[i];
    }
  }
  void swap(PointPlaces& other) {
    std::swap(values_, other.values_);
    std::swap(count_, other.count_);
    std::swap(capacity_, other.capacity_);
  }

 private:
  void reserve(int32_t count) {
    int32_t capacity = capacity_;
    kelGrowCapacity(count - 1, capacity, sizeof(T));
    capacity_ = kelRealloc(values_, sizeof(T), capacity_, count, capacity);
  }

  T* values_ = nullptr;
  int32_t count_ = 0;
  int32_t capacity_ = 0;
};
