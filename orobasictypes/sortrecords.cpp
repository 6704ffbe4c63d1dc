#include "orobasictypes/sortrecords.h"

#include <cstddef>
#include <cstdlib>

namespace {

// What qsort has no argument for.
struct Comparison {
  SortRecordsFunction function = nullptr;
  void* context = nullptr;
};

Comparison current;
Comparison current2;

template <Comparison& comparison>
int compareCurrent(const void* a, const void* b) {
  return comparison.function(a, b, comparison.context);
}

template <Comparison& comparison>
void sortWith(void* base, int32_t first, int32_t last, int32_t recordSize,
              SortRecordsFunction compare, void* context) {
  if (first >= last) return;
  comparison = {compare, context};
  const auto size = static_cast<size_t>(recordSize);
  const auto count = static_cast<size_t>(int64_t{last} - first + 1);
  auto* const start = static_cast<char*>(base) + int64_t{first} * recordSize;
  std::qsort(start, count, size, compareCurrent<comparison>);
  comparison = {};
}

}  // namespace

void sortRecords(void* base, int32_t first, int32_t last, int32_t recordSize,
                 SortRecordsFunction compare, void* context) {
  sortWith<current>(base, first, last, recordSize, compare, context);
}

void sortRecords2(void* base, int32_t first, int32_t last, int32_t recordSize,
                  SortRecordsFunction compare, void* context) {
  sortWith<current2>(base, first, last, recordSize, compare, context);
}
