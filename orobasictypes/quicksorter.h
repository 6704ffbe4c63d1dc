// QuickSorter: the steps of quickSort, for any comparison that the compiler sees; quicksort.h has
// the forms for callers. Whoever sorts flat records by a comparison of its own takes this.
//
//   auto compare = [](const Record& a, const Record& b) { return a.key - b.key; };
//   flatQuickSorter(records, compare, stack).sort(first, last);
//
// Which comparisons are made, and in which order, is part of the contract: a comparison that is not
// consistent, or one that has equal elements, shows it.
#pragma once

#include <cstdint>
#include <utility>

#include "orobasictypes/orointlist.h"

// `Elements` has operator[], to read, and put(i, value), and says whether storing a value where it
// stands already goes unnoticed; a plain pointer does as FlatElements. The sorter keeps copies of
// both, and of the comparison: what a comparison is to remember it holds by reference.
template <class T>
struct FlatElements {
  static constexpr bool isFlat = true;
  T* elements;

  const T& operator[](int32_t i) const { return elements[i]; }
  void put(int32_t i, const T& value) const { elements[i] = value; }
};

template <class T, class Elements, class Compare>
class QuickSorter {
 public:
  QuickSorter(Elements elements, const Compare& compare, OroIntList& stack)
      : elements_(elements), compare_(compare), stack_(stack), bottom_(stack.Count()) {}

  // Whether a range goes on the stack; a shorter one is exchanged at once.
  static bool isLong(int32_t first, int32_t last) { return int64_t{last} - first > 4; }

  // Requires: isLong(first, last).
  void sort(int32_t first, int32_t last) {
    push(first, last);
    while (stack_.Count() > bottom_) {
      const int32_t right = stack_.Take();
      int32_t left = stack_.Take();
      // The part on the right is the next, so it need not wait on the stack.
      for (;;) {
        bool isTied = false;
        const T pivot = choosePivot(left, right, isTied);
        const int32_t middle = partition(left, right, pivot);
        openLeft(left, middle - 1, isTied);
        left = middle + 1;
        if (!isLong(left, right)) {
          sortShort(left, right, isTied);
          break;
        }
      }
    }
  }

  // Requires: first < last.
  void exchange(int32_t first, int32_t last) { exchangeAll<false>(first, last); }

 private:
  template <bool isTied>
  void exchangeAll(int32_t first, int32_t last) {
    const Elements elements = elements_;
    const Compare compare = compare_;
    for (int32_t i = first; i < last; ++i) {
      T held = elements[i];
      for (int32_t j = i + 1; j <= last; ++j) {
        const T other = elements[j];
        const bool isBehind = compare(held, other) > 0;
        exchangeWith<isTied>(elements, j, other, isBehind, held);
      }
      elements.put(i, held);
    }
  }

  // Leaves the one that stands before the other in `held`. Which it is, is anybody's guess, so
  // where storing costs nothing it is not made a branch. Among equals the guess is known, and the
  // next comparison need not wait for this one.
  template <bool isTied>
  static void exchangeWith(const Elements& elements, int32_t j, const T& other, bool isBehind,
                           T& held) {
    if constexpr (Elements::isFlat && sizeof(T) <= sizeof(void*) && !isTied) {
      elements.put(j, isBehind ? held : other);
      held = isBehind ? other : held;
    } else if (isBehind) {
      elements.put(j, held);
      held = other;
    }
  }

  void push(int32_t first, int32_t last) {
    stack_.Add(first);
    stack_.Add(last);
  }

  // `isTied`: the elements are likely to be equal.
  void openLeft(int32_t first, int32_t last, bool isTied) {
    if (isLong(first, last)) {
      push(first, last);
    } else {
      sortShort(first, last, isTied);
    }
  }
  void sortShort(int32_t first, int32_t last, bool isTied) {
    if (first >= last) return;
    isTied ? exchangeAll<true>(first, last) : exchangeAll<false>(first, last);
  }

  // The median of the first, the middle and the last, which ends beside the first one. `isTied`
  // tells whether all three are equal, so that the others probably are.
  T choosePivot(int32_t left, int32_t right, bool& isTied) {
    const auto middle = static_cast<int32_t>((int64_t{left} + right) >> 1);
    T low = elements_[left];
    T high = elements_[right];
    T pivot = elements_[middle];
    const T beside = elements_[left + 1];
    const int32_t ends = compare_(low, high);
    if (ends > 0) {
      std::swap(low, high);
      elements_.put(left, low);
      elements_.put(right, high);
    }
    const int32_t upper = compare_(high, pivot);
    if (upper < 0) {
      elements_.put(right, pivot);
      pivot = high;
    } else if (compare_(pivot, low) < 0) {
      elements_.put(left, pivot);
      pivot = low;
    }
    isTied = ends == 0 && upper == 0;
    elements_.put(left + 1, pivot);
    elements_.put(middle, beside);
    return pivot;
  }

  // Where the pivot ends: nothing before it stands behind it, nothing behind it before. A function
  // of its own, and on copies of its own, so that all it needs is in registers beside the
  // comparisons.
  [[gnu::noinline]] int32_t partition(int32_t left, int32_t right, const T pivot) const {
    const Elements elements = elements_;
    const Compare compare = compare_;
    int32_t l = left + 1;
    int32_t r = right;
    for (;;) {
      // The pivot stands at left + 1; a comparison that denies that it equals itself stops there.
      do --r;
      while (compare(elements[r], pivot) > 0 && r > left + 1);
      do ++l;
      while (l < r && compare(elements[l], pivot) < 0);
      if (l >= r) break;
      const T moved = elements[l];
      elements.put(l, elements[r]);
      elements.put(r, moved);
    }
    if (left + 1 != r) elements.put(left + 1, elements[r]);
    elements.put(r, pivot);
    return r;
  }

  const Elements elements_;
  const Compare compare_;
  OroIntList& stack_;
  const int32_t bottom_;  // what the caller's stack held before
};

template <class T, class Compare>
QuickSorter<T, FlatElements<T>, Compare> flatQuickSorter(T* elements, const Compare& compare,
                                                         OroIntList& stack) {
  return {FlatElements<T>{elements}, compare, stack};
}
