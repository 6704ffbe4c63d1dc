// quickSort: sorts an index instead of the records themselves, so that records that lie in pages
// move once, afterwards, and others can follow them (applyorder.h).
//
//   OroMM::IntArray index(OroMM::LargestIndex{count});
//   for (int32_t i = 1; i <= count; ++i) index.Set(i, i);
//   quickSort(index, 1, count, compare);
//
// The range is inclusive. The calls of the comparison are the same for the same input everywhere.
// Equal elements end in an order of the sort's own. No recursion; the stack of open ranges comes
// from a shared pool, unless the caller brings one, which is as it was afterwards. Sorts on several
// threads do not meet in anything else.
#pragma once

#include <cstdint>

#include "orobasictypes/array.h"
#include "orobasictypes/orointlist.h"
#include "orobasictypes/quicksort_compare.h"

// As QuickSort_Compare::Compare.
using QuickSortFunction = int32_t (*)(int32_t a, int32_t b, void* context);

// Each is false, and does nothing, when `first` is not below `last`. An array reads as 0 beyond its
// size and grows where the sort writes there; a range of one begins at 0 or above.
bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSort_Compare& compare);
bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSort_Compare& compare,
               OroIntList& stack);
bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context);
bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context, OroIntList& stack);
bool quickSort(int32_t* index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context);
bool quickSort(int32_t* index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context, OroIntList& stack);
