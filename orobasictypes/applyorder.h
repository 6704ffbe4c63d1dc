// applyOrder: brings records into the order of a sorted index, in place, with room for one record
// beside them.
//
//   quickSort(index, 1, count, compare);
//   applyOrder(index, 1, count, assign);
//
// index[p] is the place of the record that belongs at p. Each record moves once. Which places are
// done is noted in a vector from a shared pool, unless the caller brings one; it is empty
// afterwards.
#pragma once

#include <cstdint>

#include "orobasictypes/array.h"
#include "orobasictypes/quicksort_assign.h"

class BitVector;

// The places `first` to `last`. A record that is already right is not touched. An index that is no
// permutation of them loses records, but comes to its end.
void applyOrder(const OroMM::IntArray& index, int32_t first, int32_t last,
                QuickSort_Assign& assign);
// Bit p - first of `done` stands for place p: those that are set are left out.
void applyOrder(const OroMM::IntArray& index, int32_t first, int32_t last, QuickSort_Assign& assign,
                BitVector& done);
