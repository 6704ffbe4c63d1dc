// Natural order of texts: letter case is ignored and digit runs count as numbers, so that "Item 9"
// stands before "Item 10". It is the order of the values in a settings document.
//
// It is no ordering in the sense of the standard library: "a2" and "A1" are each above the other,
// and "a1" is below "a2" all the same. Never hand it to std::sort or a map; take kelNaturalSort,
// which works for any answers. Pure, any thread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

// Below 0 when the left text comes first, 0 for equal texts, else above 0. A null text comes first.
// Where the first unequal letters differ in case alone, each text comes after the other.
int kelNaturalCompare(const char* left, const char* right);

// Merges two neighbouring sorted runs, [low, middle) and [middle, high), into `out`. On a tie the
// left one goes first.
template <class T, class PathOf>
void kelNaturalMerge(const std::vector<T>& from, std::vector<T>& out, size_t low, size_t middle,
                     size_t high, const PathOf& pathOf) {
  size_t left = low;
  size_t right = middle;
  for (size_t at = low; at < high; ++at) {
    const bool takeRight =
        right < high &&
        (left == middle || kelNaturalCompare(pathOf(from[right]), pathOf(from[left])) < 0);
    out[at] = from[takeRight ? right++ : left++];
  }
}

// Sorts by the texts that `pathOf` gives; what is not ordered keeps its place. A merge sort, which
// asks for nothing but "is below" and makes the same number of steps whatever the answers.
template <class T, class PathOf>
void kelNaturalSort(std::vector<T>& items, const PathOf& pathOf) {
  std::vector<T> other(items.size());
  const size_t count = items.size();
  for (size_t run = 1; run < count; run *= 2) {
    for (size_t low = 0; low < count; low += 2 * run) {
      const size_t middle = std::min(low + run, count);
      kelNaturalMerge(items, other, low, middle, std::min(low + 2 * run, count), pathOf);
    }
    items.swap(other);
  }
}
