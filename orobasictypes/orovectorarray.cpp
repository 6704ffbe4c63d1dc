#include "orobasictypes/orovectorarray.h"

#include <algorithm>
#include <utility>

#include "interfaces/IRealPArrayFactory.h"
#include "orobasictypes/binio.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/pointruns.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr int32_t mostPoints = INT32_MAX - OroMM::VectorArray::perBlock;
constexpr int32_t firstRoom = 1024;  // that a factory is asked for

}  // namespace

bool OroVectorArray::GetChecked(int32_t i, OroVector& out) const {
  if (i < 1 || i > count_) return false;
  Get(i, out);
  return true;
}

void OroVectorArray::Clear() {
  count_ = 0;
  Reserve(0);
}

void OroVectorArray::ClearAll() {
  count_ = 0;
  points_.Resize(0, false);
}

bool OroVectorArray::Reserve(int32_t n) {
  if (n <= points_.Size()) return true;
  points_.Resize(n, false);
  count_ = std::min(count_, n);
  return n <= points_.Size();
}

bool OroVectorArray::Materialize() {
  points_.Materialize(true);
  return true;
}

int32_t OroVectorArray::Add(const OroVector& point) {
  // A count that SetCount made, which nobody checks.
  if (count_ < -1 || count_ == INT32_MAX) return 0;
  const OroVector added = point;  // it may be one of this array's
  ++count_;
  while (count_ >= points_.Size()) {
    const int32_t room = points_.Size();
    const int64_t twice = std::clamp<int64_t>(int64_t{room} * 2, leastRoom, mostPoints);
    if (!Reserve(static_cast<int32_t>(twice)) || points_.Size() == room) {
      --count_;
      return 0;
    }
  }
  points_.Set(count_, added);
  return count_;
}

int32_t OroVectorArray::AddD(const double* position) {
  return Add(position != nullptr ? OroVector(position[0], position[1], position[2]) : OroVector());
}

int32_t OroVectorArray::AddAll(const OroVector* points, int32_t n) {
  for (int32_t done = 0; done < n;) {
    const int32_t last = Add(points[done++]);
    if (last == 0) return 0;
    const int32_t fitting = std::min(n - done, points_.Size() - 1 - last);
    setAll(last + 1, points + done, fitting);
    done += fitting;
    count_ = last + fitting;
  }
  return count_;
}

// As Set for each of them: a block that is absent stays so while origins come.
void OroVectorArray::setAll(int32_t first, const OroVector* points, int32_t n) {
  while (n > 0) {
    const int32_t place = first & OroMM::VectorArray::mask;
    const int32_t size = std::min(n, OroMM::VectorArray::perBlock - place);
    const int32_t block = first >> OroMM::VectorArray::shift;
    OroVector* elements = points_.Block(block);
    int32_t done = 0;
    for (; elements == nullptr && done < size; ++done) {
      points_.Set(first + done, points[done]);
      elements = points_.Block(block);
    }
    if (elements != nullptr) std::copy_n(points + done, size - done, elements + place + done);
    first += size;
    points += size;
    n -= size;
  }
}

bool OroVectorArray::Set(int32_t i, const OroVector& point) {
  if (i < 0) return false;
  const OroVector stored = point;
  if (i >= count_) {
    if (i >= points_.Size() && (i >= mostPoints || !Reserve(i + 1))) return false;
    count_ = i;
  }
  points_.Set(i, stored);
  return true;
}

bool OroVectorArray::SetF(int32_t i, const float* position) {
  return Set(i, OroVector(position[0], position[1], position[2]));
}

bool OroVectorArray::SetExisting(int32_t i, const OroVector& point) {
  if (i < 0) return false;
  const OroVector stored = point;
  points_.At(i) = stored;
  return true;
}

bool OroVectorArray::Insert(int32_t i, const OroVector& point) {
  if (i < 1 || int64_t{i} > int64_t{count_} + 1) return false;
  const OroVector inserted = point;
  const bool isLast = i > count_;
  if (Add(inserted) == 0) return false;
  if (isLast) return true;
  for (int32_t k = count_; k > i; --k) points_.Set(k, points_.Get(k - 1));
  points_.Set(i, inserted);
  return true;
}

// The place behind the last point is read as well: it is there, the room being above the count.
bool OroVectorArray::Remove(int32_t i) {
  if (i < 1 || i > count_) return false;
  for (int32_t k = i; k < count_; ++k) points_.Set(k, points_.Get(k + 1));
  points_.Set(count_, count_ < INT32_MAX ? points_.Get(count_ + 1) : OroVector());
  return RemoveLast(1);
}

bool OroVectorArray::RemoveLast(int32_t n) {
  const int64_t left = int64_t{count_} - std::min(n, count_);
  count_ = static_cast<int32_t>(std::min<int64_t>(left, INT32_MAX));
  return true;
}

void OroVectorArray::Reverse() {
  for (int32_t k = 1; k <= count_ / 2; ++k) {
    const int32_t other = count_ - k + 1;
    const OroVector point = points_.Get(k);
    points_.Set(k, points_.Get(other));
    points_.Set(other, point);
  }
}

// A point waits outside until the one at its target was taken; the chain ends where it began, where
// a point is left out, or where the target's own point has gone already.
void OroVectorArray::Permute(const OroMM::IntArray& map, int32_t count) {
  const int32_t given = count == -1 ? map.Size() - 1 : count;
  const int32_t last = std::min(given, count_);
  if (last < 1) return;
  BitVector waiting(last);
  waiting.SetAll(last);
  for (int32_t start = waiting.NextSet(-1); start > 0; start = waiting.NextSet(start)) {
    OroVector point = points_.Get(start);
    for (int32_t from = start; waiting.Test(from);) {
      waiting.Clear(from);
      const int32_t to = map.Get(from);
      if (to < 1 || to > count_) break;
      const OroVector next = points_.Get(to);
      points_.Set(to, point);
      point = next;
      from = to;
    }
  }
}

void OroVectorArray::Swap(OroVectorArray& other) {
  points_.SwapContents(other.points_);
  std::swap(count_, other.count_);
  RealPArray::Swap(other);
}

bool OroVectorArray::Write(BinOutput& output) {
  const int32_t count = std::max(count_, 0);
  if (!BinMagic(chunkId, chunkVersion).Write(output) || !output.Write(&count_, 1)) return false;
  bool isWritten = true;
  pointruns::forEach(points_, count, [&](const OroVector*, int32_t first, int32_t size) {
    isWritten = isWritten && output.WriteEach(&points_.At(first).x, 3, size);
  });
  return isWritten && output.IsGood();
}

bool OroVectorArray::Read(BinInput& input) {
  Clear();
  int32_t count = 0;
  if (!BinMagic().ReadMatch(input, BinMagic(chunkId, chunkVersion))) return false;
  if (!input.Read(&count, 1) || count < 0 || count >= mostPoints) return false;
  if (!Reserve(count + 1)) return false;
  SetCount(count);
  bool isRead = true;
  pointruns::forEach(points_, count, [&](const OroVector*, int32_t first, int32_t size) {
    isRead = isRead && input.ReadEach(&points_.At(first).x, 3, size);
  });
  return isRead && input.IsGood();
}

IRealPArray* oroMakePointArray(const BinMagic& header) {
  const SPtr<IRealPArrayFactory> factory;
  return factory ? factory->MakeFromChunk(header.GetValue(), firstRoom) : nullptr;
}
