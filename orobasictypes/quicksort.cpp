#include "orobasictypes/quicksort.h"

#include <algorithm>
#include <cstring>

#include "orobasictypes/kelgrowcapacity.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oropool.h"
#include "orobasictypes/quicksorter.h"

namespace {

constexpr int32_t stackCapacity = 41;

OroPool<OroIntList>& stackPool() {
  static auto* const pool = new OroPool<OroIntList>;
  return *pool;
}

// A split array, element by element.
struct SplitElements {
  static constexpr bool isFlat = false;
  OroMM::IntArray* index;

  int32_t operator[](int32_t i) const { return index->Get(i); }
  void put(int32_t i, int32_t value) const {
    if (i >= index->Size()) {
      int32_t size = index->Size();
      kelGrowCapacity(i, size, sizeof(int32_t));
      index->Resize(size, false);
    }
    index->Set(i, value);
  }
};

// The range of a split array in one piece, which is brought back when this goes; no piece when the
// heap has none of that size.
class FlatCopy {
 public:
  FlatCopy(OroMM::IntArray& index, int32_t first, int32_t last)
      : index_(index), first_(first), count_(int64_t{last} - first + 1) {
    const int64_t bytes = count_ * int64_t{sizeof(int32_t)};
    if (first < 0 || last >= index.Size() || bytes > INT32_MAX) return;
    values_ = static_cast<int32_t*>(kelHeapCalls.allocate(static_cast<size_t>(bytes)));
    if (values_ == nullptr) return;
    forEachRun([this](int32_t i, int32_t* elements, size_t count) {
      int32_t* const to = values_ + (i - first_);
      if (elements != nullptr) {
        std::memcpy(to, elements, count * sizeof(int32_t));
      } else {
        std::fill_n(to, count, 0);
      }
    });
  }
  ~FlatCopy() {
    if (values_ == nullptr) return;
    forEachRun([this](int32_t i, int32_t* elements, size_t count) {
      const int32_t* const from = values_ + (i - first_);
      if (elements != nullptr) {
        std::memcpy(elements, from, count * sizeof(int32_t));
      } else {
        for (size_t k = 0; k < count; ++k) index_.Set(i + static_cast<int32_t>(k), from[k]);
      }
    });
    kelFree(values_);
  }
  FlatCopy(const FlatCopy&) = delete;
  FlatCopy& operator=(const FlatCopy&) = delete;

  int32_t* values() const { return values_; }

 private:
  // Calls run(index, elements, count) for what of the range lies in each block; the elements of one
  // that does not exist are null.
  template <class Run>
  void forEachRun(const Run& run) {
    constexpr int32_t perBlock = OroMM::IntArray::perBlock;
    for (int64_t i = first_; i < first_ + count_;) {
      const auto block = static_cast<int32_t>(i / perBlock);
      const int64_t end = std::min((int64_t{block} + 1) * perBlock, first_ + count_);
      int32_t* const elements = index_.Block(block);
      run(static_cast<int32_t>(i), elements != nullptr ? elements + i % perBlock : nullptr,
          static_cast<size_t>(end - i));
      i = end;
    }
  }

  OroMM::IntArray& index_;
  const int64_t first_;
  const int64_t count_;
  int32_t* values_ = nullptr;
};

// A short range needs no stack.
template <class Elements, class Compare>
bool sortElements(Elements elements, int32_t first, int32_t last, Compare& compare,
                  OroIntList* stack) {
  using Sorter = QuickSorter<int32_t, Elements, Compare>;
  if (first >= last) return false;
  if (!Sorter::isLong(first, last)) {
    OroIntList none;
    Sorter(elements, compare, none).exchange(first, last);
  } else if (stack != nullptr) {
    Sorter(elements, compare, *stack).sort(first, last);
  } else {
    const OroPool<OroIntList>::Loan loan(stackPool(), [] { return new OroIntList(stackCapacity); });
    Sorter(elements, compare, *loan).sort(first, last);
  }
  return true;
}

template <class Compare>
bool sortSplit(OroMM::IntArray& index, int32_t first, int32_t last, Compare compare,
               OroIntList* stack) {
  if (first >= last) return false;
  const FlatCopy flat(index, first, last);
  if (flat.values() == nullptr) {
    return sortElements(SplitElements{&index}, first, last, compare, stack);
  }
  return sortElements(FlatElements<int32_t>{flat.values()}, 0, last - first, compare, stack);
}

auto asFunction(QuickSort_Compare& compare) {
  return [&compare](int32_t a, int32_t b) { return compare.Compare(a, b); };
}

auto asFunction(QuickSortFunction compare, void* context) {
  return [compare, context](int32_t a, int32_t b) { return compare(a, b, context); };
}

bool sortFlat(int32_t* index, int32_t first, int32_t last, QuickSortFunction compare, void* context,
              OroIntList* stack) {
  auto function = asFunction(compare, context);
  return sortElements(FlatElements<int32_t>{index}, first, last, function, stack);
}

}  // namespace

bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSort_Compare& compare) {
  return sortSplit(index, first, last, asFunction(compare), nullptr);
}

bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSort_Compare& compare,
               OroIntList& stack) {
  return sortSplit(index, first, last, asFunction(compare), &stack);
}

bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context) {
  return sortSplit(index, first, last, asFunction(compare, context), nullptr);
}

bool quickSort(OroMM::IntArray& index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context, OroIntList& stack) {
  return sortSplit(index, first, last, asFunction(compare, context), &stack);
}

bool quickSort(int32_t* index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context) {
  return sortFlat(index, first, last, compare, context, nullptr);
}

bool quickSort(int32_t* index, int32_t first, int32_t last, QuickSortFunction compare,
               void* context, OroIntList& stack) {
  return sortFlat(index, first, last, compare, context, &stack);
}
