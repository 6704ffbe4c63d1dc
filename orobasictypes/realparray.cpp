#include "orobasictypes/realparray.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <utility>

#include "interfaces/IOroPointExtraInfo.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oromatrix.h"
#include "orobasictypes/pointkernels.h"
#include "orobasictypes/pointruns.h"
#include "orobasictypes/vertexarrayrpa.h"

namespace {

constexpr char realparraySource[] = "orobasictypes/realparray";
constexpr double beyondAll = 1e42;     // where an empty box begins
constexpr double leastExtent = 1e-16;  // of an array without size

// Where an operation is missing, the line that it has always been reported with.
constexpr int32_t lineOfAddF = 204;
constexpr int32_t lineOfInsert = 246;
constexpr int32_t lineOfRemoveLast = 253;
constexpr int32_t lineOfSetF = 267;
constexpr int32_t lineOfRemove = 736;
constexpr int32_t lineOfMaterialize = 760;
constexpr int32_t lineOfGetCapacity = 767;
constexpr int32_t lineOfWrite = 864;
constexpr int32_t lineOfRead = 871;

void missing(int32_t line) { kelAssertFail("", realparraySource, line); }

// A box that holds nothing yet, or the one of an array without points.
void beginBox(int32_t count, OroVector& min, OroVector& max) {
  const double edge = count < 1 ? 0 : beyondAll;
  min = OroVector(edge, edge, edge);
  max = OroVector(0 - edge, 0 - edge, 0 - edge);
}

// How the points that a mask has lie: far apart, so that the processor finds none of them by
// itself; mixed with others; or in stretches that are worth finding.
enum class Spread { sparse, mixed, dense };

// Of a count that is not known none is kept: others may read the mask as well.
Spread spreadOf(const BitVector& mask, int32_t count) {
  const int32_t known = mask.KnownCount();
  const int64_t set = known >= 0 ? known : mask.CountAfter(0);
  if (set >= int64_t{count} * 7 / 8) return Spread::dense;
  return set < count / 16 ? Spread::sparse : Spread::mixed;
}

// The points that the mask has, of the first `count`, one by one: visit(point), where an absent one
// is null.
template <class Visit>
void forEachSingle(const OroMM::VectorArray& points, const BitVector& mask, int32_t count,
                   Visit&& visit) {
  const auto limit = static_cast<uint32_t>(std::max(count, 0));
  mask.ForEachSet([&](int32_t b) __attribute__((always_inline)) {
    if (static_cast<uint32_t>(b) - 1 < limit) visit(pointruns::at(points, b));
  });
}

// The same for points that lie far apart: each is asked for long before it is its turn. What is
// visited may change points at places that are not above how many were visited.
template <class Visit>
void forEachFar(const OroMM::VectorArray& points, const BitVector& mask, int32_t count,
                Visit&& visit) {
  constexpr uint32_t ahead = 32;
  const OroVector* coming[ahead];
  uint32_t seen = 0;
  const auto ask = [&](const OroVector* point) __attribute__((always_inline)) {
    const OroVector*& slot = coming[seen % ahead];
    if (seen >= ahead) visit(slot);
    slot = point;
    ++seen;
    if (point == nullptr) return;
    _mm_prefetch(&point->x, _MM_HINT_T0);
    _mm_prefetch(&point->z, _MM_HINT_T0);
  };
  forEachSingle(points, mask, count, ask);
  for (uint32_t i = seen - std::min(seen, ahead); i < seen; ++i) visit(coming[i % ahead]);
}

// The box of points that come one by one, in registers. The minimum keeps its second operand where
// the first is not a number or equal.
class GrowingBox {
 public:
  GrowingBox(const OroVector& min, const OroVector& max)
      : lowXY_(_mm_loadu_pd(&min.x)),
        lowZ_(_mm_load_sd(&min.z)),
        highXY_(_mm_loadu_pd(&max.x)),
        highZ_(_mm_load_sd(&max.z)) {}

  [[gnu::always_inline]] void add(const OroVector& point) {
    const __m128d xy = _mm_loadu_pd(&point.x);
    const __m128d z = _mm_load_sd(&point.z);
    lowXY_ = _mm_min_pd(xy, lowXY_);
    highXY_ = _mm_max_pd(xy, highXY_);
    lowZ_ = _mm_min_sd(z, lowZ_);
    highZ_ = _mm_max_sd(z, highZ_);
  }
  void get(OroVector& min, OroVector& max) const {
    _mm_storeu_pd(&min.x, lowXY_);
    _mm_store_sd(&min.z, lowZ_);
    _mm_storeu_pd(&max.x, highXY_);
    _mm_store_sd(&max.z, highZ_);
  }

 private:
  __m128d lowXY_, lowZ_, highXY_, highZ_;
};

void widenBySingle(const OroMM::VectorArray& points, const BitVector& mask, int32_t count,
                   Spread spread, OroVector& min, OroVector& max) {
  const OroVector origin;
  GrowingBox box(min, max);
  const auto widen = [&](const OroVector* point) __attribute__((always_inline)) {
    box.add(point != nullptr ? *point : origin);
  };
  if (spread == Spread::sparse) {
    forEachFar(points, mask, count, widen);
  } else {
    forEachSingle(points, mask, count, widen);
  }
  box.get(min, max);
}

// What a matrix does to points that lie in one piece.
class PointChange {
 public:
  explicit PointChange(const OroMatrix& matrix) : m_(matrix.m) {
    const PointKernels& kernels = pointKernels();
    change_ = matrix.IsTranslation() ? kernels.translate
              : matrix.IsAffine()    ? kernels.transform
                                     : kernels.project;
  }
  void operator()(OroVector* points, int64_t count) const { change_(points, count, m_); }

 private:
  const double* m_;
  void (*change_)(OroVector* points, int64_t count, const double* m);
};

// A block of origins is made where they do not stay origins.
void changeBlocks(OroMM::VectorArray& points, int32_t count, const PointChange& change) {
  OroVector origin;
  change(&origin, 1);
  const bool staysAbsent = origin == OroVector();
  pointruns::forEach(points, count, [&](const OroVector* run, int32_t first, int32_t size) {
    if (run == nullptr && (staysAbsent || first >= points.Size())) return;
    change(&points.At(first), size);
  });
}

// Stores a point past the caches, which need not fetch its place first.
void storeFar(OroVector& place, const OroVector& point) {
  auto* const to = reinterpret_cast<long long*>(&place.x);
  _mm_stream_si64(to, std::bit_cast<long long>(point.x));
  _mm_stream_si64(to + 1, std::bit_cast<long long>(point.y));
  _mm_stream_si64(to + 2, std::bit_cast<long long>(point.z));
}

// Moves single points down to the places from 1 on.
class PointsDown {
 public:
  explicit PointsDown(OroMM::VectorArray& points) : points_(points) {}
  ~PointsDown() { _mm_sfence(); }
  PointsDown(const PointsDown&) = delete;
  PointsDown& operator=(const PointsDown&) = delete;

  int32_t count() const { return count_; }

  // Null is an origin, for which no block is made.
  void put(const OroVector* point) {
    points_.Set(++count_, point != nullptr ? *point : OroVector());
  }
  // Those of the 64 points from `first` on that `bits` has. Requires: they lie in one block.
  void put(uint64_t bits, int32_t first) {
    const OroVector* const source = pointruns::at(points_, first);
    const int32_t place = count_ + 1;
    const int32_t inBlock = place & OroMM::VectorArray::mask;
    const int32_t size = std::popcount(bits);
    OroVector* const block = points_.Block(place >> OroMM::VectorArray::shift);
    if (source == nullptr || block == nullptr || inBlock + size > OroMM::VectorArray::perBlock) {
      for (; bits != 0; bits &= bits - 1) {
        put(source != nullptr ? source + std::countr_zero(bits) : nullptr);
      }
      return;
    }
    count_ += size;
    OroVector* to = block + inBlock;
    if (first - place > farAway) {
      for (; bits != 0; bits &= bits - 1) storeFar(*to++, source[std::countr_zero(bits)]);
    } else {
      for (; bits != 0; bits &= bits - 1) *to++ = source[std::countr_zero(bits)];
    }
  }

 private:
  // In points, 24 MiB: what is so far behind has left the caches.
  static constexpr int32_t farAway = 1 << 20;

  OroMM::VectorArray& points_;
  int32_t count_ = 0;
};

// The points that the mask has, of the first `last`; returns how many.
int32_t moveSingle(OroMM::VectorArray& points, const BitVector& mask, int32_t last, Spread spread) {
  PointsDown down(points);
  if (spread == Spread::sparse) {
    forEachFar(points, mask, last, [&down](const OroVector* point) { down.put(point); });
  } else {
    mask.ForEachPair([&](uint64_t bits, int32_t first) {
      if (first > last) return;
      if (last - first < 63) bits &= UINT64_MAX >> (63 - (last - first));
      if (first == 0) bits &= ~uint64_t{1};
      down.put(bits, first);
    });
  }
  return down.count();
}

// Moves a stretch of points down, block by block. An absent block stays so while origins come.
void moveDown(OroMM::VectorArray& points, int32_t from, int32_t to, int32_t count) {
  constexpr int32_t perBlock = OroMM::VectorArray::perBlock;
  constexpr int32_t mask = OroMM::VectorArray::mask;
  while (count > 0) {
    const int32_t piece = std::min({count, perBlock - (from & mask), perBlock - (to & mask)});
    const OroVector* const source = pointruns::at(points, from);
    OroVector* const target = points.Block(to >> OroMM::VectorArray::shift);
    if (target != nullptr && source != nullptr) {
      std::copy(source, source + piece, target + (to & mask));
    } else if (target != nullptr) {
      std::fill_n(target + (to & mask), piece, OroVector());
    } else if (source != nullptr) {
      for (int32_t i = 0; i < piece; ++i) points.Set(to + i, source[i]);
    }
    from += piece;
    to += piece;
    count -= piece;
  }
}

}  // namespace

RealPArray::RealPArray(const RealPArray& other, bool withExtra)
    : ProgressCallbackBase(other), scale_(other.scale_), packed_(other.packed_) {
  if (withExtra && other.extra_ != nullptr) SetExtraInfo(other.extra_->Clone());
}

RealPArray::~RealPArray() { dropExtraInfo(); }

bool RealPArray::Remove(int32_t) {
  missing(lineOfRemove);
  return false;
}

bool RealPArray::Insert(int32_t, const OroVector&) {
  missing(lineOfInsert);
  return false;
}

bool RealPArray::RemoveLast(int32_t) {
  missing(lineOfRemoveLast);
  return false;
}

bool RealPArray::Materialize() {
  missing(lineOfMaterialize);
  return false;
}

int32_t RealPArray::GetCapacity() const {
  missing(lineOfGetCapacity);
  return 0;
}

int32_t RealPArray::AddF(const float*) {
  missing(lineOfAddF);
  return 0;
}

bool RealPArray::SetF(int32_t, const float*) {
  missing(lineOfSetF);
  return false;
}

bool RealPArray::Read(BinInput&) {
  missing(lineOfRead);
  return false;
}

bool RealPArray::Write(BinOutput&, const BitVector&) {
  missing(lineOfWrite);
  return false;
}

void RealPArray::AddUntil(int32_t n) {
  while (GetCount() < n && Add(OroVector()) != 0) {
  }
}

OroVector RealPArray::GetVector(int32_t i) const {
  OroVector point;
  Get(i, point);
  return point;
}

OroFloat4 RealPArray::GetFloat4(int32_t i) const {
  const OroVector point = GetVector(i);
  return {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z), 1};
}

void RealPArray::Get(int32_t i, float out[3]) const {
  const OroVector point = GetVector(i);
  out[0] = static_cast<float>(point.x);
  out[1] = static_cast<float>(point.y);
  out[2] = static_cast<float>(point.z);
}

void RealPArray::Get(int32_t i, double& x, double& y, double& z) const {
  const OroVector point = GetVector(i);
  x = point.x;
  y = point.y;
  z = point.z;
}

double RealPArray::GetScale() const { return scale_; }

void RealPArray::SetScale(double scale) { scale_ = scale; }

const OroMM::VectorArray* RealPArray::Blocks() const { return nullptr; }

void RealPArray::Assign(const RealPArray& other) {
  if (&other == this) return;
  observer_ = nullptr;
  scale_ = other.scale_;
  const int32_t count = other.GetCount();
  Clear();
  Reserve(count);
  OroVector point;
  for (int32_t i = 1; i <= count; ++i) {
    other.Get(i, point);
    Add(point);
  }
  packed_ = other.packed_;
  if (other.extra_ == nullptr) {
    dropExtraInfo();
  } else if (extra_ == nullptr) {
    SetExtraInfo(other.extra_->Clone());
  } else {
    extra_->Assign(other.extra_);
  }
}

bool RealPArray::operator==(const RealPArray& other) const {
  const int32_t count = GetCount();
  if (other.GetCount() != count) return false;
  if ((extra_ == nullptr) != (other.extra_ == nullptr)) return false;
  if (extra_ != nullptr && !extra_->Equals(other.extra_, count)) return false;
  OroVector mine;
  OroVector theirs;
  for (int32_t i = 1; i <= count; ++i) {
    Get(i, mine);
    other.Get(i, theirs);
    if (!(mine == theirs)) return false;
  }
  return true;
}

double RealPArray::AbsoluteMaximum() const {
  const PointKernels& kernels = pointKernels();
  double most = leastExtent;
  pointruns::forEach(*this, [&](const OroVector* run, int32_t, int32_t size) {
    if (run != nullptr) most = kernels.largest(run, size, most);
  });
  return most;
}

void RealPArray::GetBounds(OroVector& min, OroVector& max) const {
  const PointKernels& kernels = pointKernels();
  beginBox(GetCount(), min, max);
  const OroVector origin;
  pointruns::forEach(*this, [&](const OroVector* run, int32_t, int32_t size) {
    kernels.widen(run != nullptr ? run : &origin, run != nullptr ? size : 1, min, max);
  });
}

void RealPArray::GetBounds(OroVector& min, OroVector& max, const BitVector& mask) const {
  const PointKernels& kernels = pointKernels();
  const int32_t count = GetCount();
  beginBox(count, min, max);
  const OroMM::VectorArray* const points = Blocks();
  const Spread spread = points != nullptr ? spreadOf(mask, count) : Spread::mixed;
  if (points != nullptr && spread != Spread::dense) {
    return widenBySingle(*points, mask, count, spread, min, max);
  }
  const OroVector origin;
  pointruns::forEachMasked(*this, mask, count, [&](const OroVector* run, int32_t, int32_t size) {
    kernels.widen(run != nullptr ? run : &origin, run != nullptr ? size : 1, min, max);
  });
}

void RealPArray::GetBoundsExtra(OroVector& min, OroVector& max, const BitVector* mask) const {
  if (mask != nullptr) {
    GetBounds(min, max, *mask);
  } else {
    GetBounds(min, max);
  }
}

void RealPArray::Transform(const OroMatrix& matrix) {
  if (matrix.IsIdentity()) return;
  const PointChange change(matrix);
  const int32_t count = GetCount();
  if (OroMM::VectorArray* const points = blocks()) return changeBlocks(*points, count, change);
  OroVector point;
  for (int32_t i = 1; i <= count; ++i) {
    Get(i, point);
    change(&point, 1);
    Set(i, point);
  }
}

void RealPArray::Compress(const BitVector& mask) {
  const int32_t count = std::max(GetCount(), 0);
  const int32_t last = count - 1;
  int32_t kept = 0;
  OroMM::VectorArray* const points = blocks();
  const Spread spread = points != nullptr ? spreadOf(mask, count) : Spread::mixed;
  if (points != nullptr && spread != Spread::dense) {
    kept = moveSingle(*points, mask, last, spread);
  } else if (points != nullptr) {
    pointruns::forEachStretch(mask, last, [&](int32_t first, int32_t size) {
      if (first != kept + 1) moveDown(*points, first, kept + 1, size);
      kept += size;
    });
  } else {
    OroVector point;
    for (int32_t i = 1; i <= last; ++i) {
      if (!mask.Test(i)) continue;
      Get(i, point);
      Set(++kept, point);
    }
  }
  Reserve(kept);
  SetCount(kept);
}

void RealPArray::Swap(RealPArray& other) {
  std::swap(extra_, other.extra_);
  std::swap(scale_, other.scale_);
  std::swap(observer_, other.observer_);
  std::swap(packed_, other.packed_);
}

void RealPArray::MakeVertexArray(IPtr<VertexArrayImp>& out) const {
  out = new VertexArrayRPA(*this);
}
