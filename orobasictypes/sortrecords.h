// sortRecords: sorts plain records where they stand, by the C library's qsort. Equal records end in
// an order that differs between the systems.
//
// The comparison passes through variables of the process: one sort at a time, and none out of a
// comparison. Two kinds of records can be sorted beside each other, with one function each.
#pragma once

#include <cstdint>

// Below 0: a stands before b; 0: they are equal; above 0: a stands behind b.
using SortRecordsFunction = int32_t (*)(const void* a, const void* b, void* context);

// The records `first` to `last`, of `recordSize` bytes each, that stand from `base` on. Fewer than
// two: nothing.
void sortRecords(void* base, int32_t first, int32_t last, int32_t recordSize,
                 SortRecordsFunction compare, void* context);
void sortRecords2(void* base, int32_t first, int32_t last, int32_t recordSize,
                  SortRecordsFunction compare, void* context);
