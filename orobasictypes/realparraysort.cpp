// The sort of the point arrays.

#include <algorithm>
#include <initializer_list>
#include <utility>

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

// The steps of the sort on keys that lie side by side: the same exchanges as on the index, so the
// same order of equal points. In long ranges it is written down without a branch which keys stop
// the scans; the first that stops one scan is exchanged with the first that stops the other, and so
// on, which is what happens when they take turns.
class KeySorter {
 public:
  KeySorter(const OroMM::VectorArray& points, PointKey* keys) : points_(points), keys_(keys) {}

  void sort(int32_t first, int32_t last) {
    stack_.Add(first);
    stack_.Add(last);
    while (stack_.Count() > 0) {
      const int32_t right = stack_.Take();
      const int32_t left = stack_.Take();
      if (right - left < longRange) {
        sortShort(left, right);
        continue;
      }
      const int32_t middle = partition(left, right, choosePivot(left, right));
      for (const int32_t end : {left, middle - 1, middle + 1, right}) stack_.Add(end);
    }
  }

 private:
  static constexpr int32_t block = 128;
  static constexpr int32_t longRange = 4 * block;

  // The keys that stop a scan, from its side: `base` and how far from it each of them stands.
  struct Stops {
    int32_t base = 0;
    int32_t taken = 0;
    int32_t count = 0;
    uint8_t steps[block];

    int32_t left() const { return count - taken; }
  };

  int32_t compare(const PointKey& a, const PointKey& b) const {
    if (a.x > b.x) return -1;
    if (a.x < b.x) return 1;
    return RealPArray::Compare(points_.Get(a.index), points_.Get(b.index));
  }
  void sortShort(int32_t first, int32_t last) {
    auto compareKeys = [this](const PointKey& a, const PointKey& b) { return compare(a, b); };
    auto sorter = flatQuickSorter(keys_, compareKeys, stack_);
    if (last - first > 4) {
      sorter.sort(first, last);
    } else if (first < last) {
      sorter.exchange(first, last);
    }
  }

  PointKey choosePivot(int32_t left, int32_t right) {
    const int32_t middle = left + (right - left) / 2;
    PointKey& low = keys_[left];
    PointKey& high = keys_[right];
    const PointKey beside = keys_[left + 1];
    PointKey pivot = keys_[middle];
    if (compare(low, high) > 0) std::swap(low, high);
    if (compare(high, pivot) < 0) {
      std::swap(high, pivot);
    } else if (compare(pivot, low) < 0) {
      std::swap(low, pivot);
    }
    keys_[left + 1] = pivot;
    keys_[middle] = beside;
    return pivot;
  }

  // A step of 1 is the scan from the left, which a key stops that does not stand before the pivot;
  // one of -1 that from the right.
  template <int32_t step>
  void findStops(int32_t base, const PointKey& pivot, Stops& stops) const {
    int32_t count = 0;
    for (int32_t i = 0; i < block; ++i) {
      const PointKey& key = keys_[base + step * i];
      const bool isBefore = key.x > pivot.x;
      const bool isBehind = key.x < pivot.x;
      stops.steps[count] = static_cast<uint8_t>(i);
      if (isBefore == isBehind) [[unlikely]] {
        count += compare(key, pivot) * step >= 0 ? 1 : 0;
      } else {
        count += (step == 1 ? isBehind : isBefore) ? 1 : 0;
      }
    }
    stops.base = base;
    stops.taken = 0;
    stops.count = count;
  }

  // Where the pivot ends: nothing before it stands behind it, nothing behind it before.
  int32_t partition(int32_t left, int32_t right, const PointKey& pivot) {
    int32_t l = left + 1;
    int32_t r = right;
    exchangeBlocks(l, r, pivot);
    for (;;) {
      // The pivot stands at left + 1.
      do --r;
      while (compare(keys_[r], pivot) > 0 && r > left + 1);
      do ++l;
      while (l < r && compare(keys_[l], pivot) < 0);
      if (l >= r) break;
      std::swap(keys_[l], keys_[r]);
    }
    if (left + 1 != r) keys_[left + 1] = keys_[r];
    keys_[r] = pivot;
    return r;
  }

  // Moves both scans to the last keys that were exchanged, while there are whole blocks between.
  void exchangeBlocks(int32_t& l, int32_t& r, const PointKey& pivot) {
    Stops fromLeft;
    Stops fromRight;
    int32_t seenLeft = l;
    int32_t seenRight = r;
    while (seenRight - seenLeft > 2 * block) {
      if (fromLeft.left() == 0) {
        findStops<1>(seenLeft + 1, pivot, fromLeft);
        seenLeft += block;
      }
      if (fromRight.left() == 0) {
        findStops<-1>(seenRight - 1, pivot, fromRight);
        seenRight -= block;
      }
      for (int32_t k = std::min(fromLeft.left(), fromRight.left()); k > 0; --k) {
        l = fromLeft.base + fromLeft.steps[fromLeft.taken++];
        r = fromRight.base - fromRight.steps[fromRight.taken++];
        std::swap(keys_[l], keys_[r]);
      }
    }
  }

  const OroMM::VectorArray& points_;
  PointKey* const keys_;
  OroIntList stack_;
};

bool sortByKeys(const OroMM::VectorArray& points, int32_t count, OroMM::IntArray& index) {
  const Scratch<PointKey> keys(count);
  if (keys.get() == nullptr) return false;
  pointruns::forEach(points, count, [&](const OroVector* run, int32_t first, int32_t size) {
    for (int32_t i = 0; i < size; ++i) {
      keys.get()[first + i - 1] = {run != nullptr ? run[i].x : 0, first + i};
    }
  });
  KeySorter(points, keys.get()).sort(0, count - 1);
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
