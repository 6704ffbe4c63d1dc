// The sort of the point arrays.

#include <algorithm>

#include "interfaces/IOroPointExtraInfo.h"
#include "orobasictypes/applyorder.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/kelgrowcapacity.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/pointruns.h"
#include "orobasictypes/quicksort.h"
#include "orobasictypes/quicksorter.h"
#include "orobasictypes/realparray.h"

namespace {

class PointCompare : public QuickSort_Compare {
 public:
  explicit PointCompare(const RealPArray& array) : array_(array) {}
  int32_t Compare(int32_t a, int32_t b) override {
    OroVector first;
    OroVector second;
    array_.Get(a, first);
    array_.Get(b, second);
    return RealPArray::Compare(first, second);
  }

 private:
  const RealPArray& array_;
};

class PointAssign : public QuickSort_Assign {
 public:
  explicit PointAssign(RealPArray& array) : array_(array) {}
  void Assign(int32_t from, int32_t to) override {
    OroVector point = held_;
    if (from != -1) array_.Get(from, point);
    if (to != -1) {
      array_.SetExisting(to, point);
    } else {
      held_ = point;
    }
  }

 private:
  RealPArray& array_;
  OroVector held_;
};

// What a point is compared by first, and which it is.
struct PointKey {
  double x;
  int32_t index;
};

// Memory for the time of a sort; null when the heap has none of that size. What is larger than
// blocks may be is left to the ways that need none.
template <class T>
class Scratch {
 public:
  explicit Scratch(int64_t count)
      : elements_(
            count <= INT32_MAX / int64_t{sizeof(T)}
                ? static_cast<T*>(kelHeapCalls.allocate(static_cast<size_t>(count) * sizeof(T)))
                : nullptr) {}
  ~Scratch() {
    if (elements_ != nullptr) kelHeapCalls.release(elements_);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  T* get() const { return elements_; }

 private:
  T* const elements_;
};

void setGrowing(OroMM::IntArray& index, int32_t i, int32_t value) {
  if (i >= index.Size()) {
    int32_t size = index.Size();
    kelGrowCapacity(i, size, sizeof(int32_t));
    index.Resize(size, false);
  }
  index.Set(i, value);
}

// The steps of the sort on keys that lie side by side: the same comparisons with the same answers
// as on the index, so the same order of equal points.
void sortKeys(const OroMM::VectorArray& points, PointKey* keys, int32_t count) {
  auto compare = [&points](const PointKey& a, const PointKey& b) {
    if (a.x > b.x) return -1;
    if (a.x < b.x) return 1;
    return RealPArray::Compare(points.Get(a.index), points.Get(b.index));
  };
  OroIntList stack;
  auto sorter = flatQuickSorter(keys, compare, stack);
  if (count > 5) {
    sorter.sort(0, count - 1);
  } else if (count > 1) {
    sorter.exchange(0, count - 1);
  }
}

bool sortByKeys(const OroMM::VectorArray& points, int32_t count, OroMM::IntArray& index) {
  const Scratch<PointKey> keys(count);
  if (keys.get() == nullptr) return false;
  pointruns::forEach(points, count, [&](const OroVector* run, int32_t first, int32_t size) {
    for (int32_t i = 0; i < size; ++i) {
      keys.get()[first + i - 1] = {run != nullptr ? run[i].x : 0, first + i};
    }
  });
  sortKeys(points, keys.get(), count);
  for (int32_t i = 1; i <= count; ++i) setGrowing(index, i, keys.get()[i - 1].index);
  return true;
}

void sortByIndex(const RealPArray& array, int32_t count, OroMM::IntArray& index) {
  for (int32_t i = 1; i <= count; ++i) setGrowing(index, i, i);
  PointCompare compare(array);
  quickSort(index, 1, count, compare);
}

// Every place that gets another point is written once, and its block is made.
bool applyByCopy(const OroMM::IntArray& index, int32_t count, OroMM::VectorArray& points) {
  const Scratch<OroVector> copy(int64_t{count} + 1);
  if (copy.get() == nullptr) return false;
  pointruns::forEach(points, count, [&](const OroVector* run, int32_t first, int32_t size) {
    if (run != nullptr) {
      std::copy(run, run + size, copy.get() + first);
    } else {
      std::fill_n(copy.get() + first, size, OroVector());
    }
  });
  for (int32_t i = 1; i <= count; ++i) {
    const int32_t from = index.Get(i);
    if (from != i) points.At(i) = copy.get()[from];
  }
  return true;
}

}  // namespace

void RealPArray::Sort(bool removeDuplicates, OroMM::IntArray* index, BitVector* keptMask) {
  const int32_t count = std::max(GetCount(), 0);
  OroMM::IntArray own(index != nullptr ? 0 : std::min(count, INT32_MAX - 2) + 2);
  OroMM::IntArray& order = index != nullptr ? *index : own;
  order.ClearRange(0, order.Size());
  OroMM::VectorArray* const points = blocks();
  if (points == nullptr || !sortByKeys(*points, count, order)) sortByIndex(*this, count, order);
  if (points == nullptr || !applyByCopy(order, count, *points)) {
    PointAssign assign(*this);
    applyOrder(order, 1, count, assign);
  }
  if (extra_ != nullptr) extra_->Permute(order, 1, count);
  if (removeDuplicates) {
    removeDuplicatesOf(count, keptMask);
  } else if (keptMask != nullptr) {
    keptMask->Zero();
    keptMask->SetAll(count);
  }
}

// What stays is compared with the last one that stayed.
void RealPArray::removeDuplicatesOf(int32_t count, BitVector* keptMask) {
  if (keptMask != nullptr) keptMask->Zero();
  int32_t last = count < 1 ? 0 : 1;
  if (keptMask != nullptr && last == 1) keptMask->Set(1);
  OroVector kept = last == 1 ? GetVector(1) : OroVector();
  for (int32_t i = 2; i <= count; ++i) {
    const OroVector point = GetVector(i);
    if (Compare(point, kept) == 0) continue;
    kept = point;
    if (++last != i) {
      SetExisting(last, point);
      if (extra_ != nullptr) extra_->CopyColor(last, i);
    }
    if (keptMask != nullptr) keptMask->Set(i);
  }
  SetCount(last);
  if (extra_ != nullptr) extra_->SetCount(last);
}
