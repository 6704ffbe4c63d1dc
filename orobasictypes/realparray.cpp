#include "orobasictypes/realparray.h"

#include <emmintrin.h>

#include <algorithm>
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

// Whether the points that the mask has come in long stretches, so that these are worth finding. Of
// a count that is not known none is kept: others may read the mask as well.
bool isDense(const BitVector& mask, int32_t count) {
  const int32_t known = mask.KnownCount();
  return (known >= 0 ? known : mask.CountAfter(0)) >= int64_t{count} * 7 / 8;
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
                   OroVector& min, OroVector& max) {
  const OroVector origin;
  const auto limit = static_cast<uint32_t>(count);
  GrowingBox box(min, max);
  mask.ForEachSet([&](int32_t b) __attribute__((always_inline)) {
    if (static_cast<uint32_t>(b) - 1 >= limit) return;
    const OroVector* const point = pointruns::at(points, b);
    box.add(point != nullptr ? *point : origin);
  });
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

// Moves single points down to the places from 1 on; returns how many.
int32_t moveSingle(OroMM::VectorArray& points, const BitVector& mask, int32_t last) {
  constexpr int32_t inBlock = OroMM::VectorArray::mask;
  const auto limit = static_cast<uint32_t>(std::max(last, 0));
  const OroVector origin;
  int32_t kept = 0;
  OroVector* target = nullptr;  // the block that place `kept` + 1 lies in, where it exists
  mask.ForEachSet([&](int32_t b) __attribute__((always_inline)) {
    if (static_cast<uint32_t>(b) - 1 >= limit) return;
    const OroVector* const source = pointruns::at(points, b);
    const OroVector& point = source != nullptr ? *source : origin;
    const int32_t to = ++kept;
    if (target == nullptr || (to & inBlock) == 0) {
      points.Set(to, point);
      target = points.Block(to >> OroMM::VectorArray::shift);
    } else {
      target[to & inBlock] = point;
    }
  });
  return kept;
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
  if (points != nullptr && !isDense(mask, count)) {
    return widenBySingle(*points, mask, count, min, max);
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
  const int32_t count = GetCount();
  int32_t kept = 0;
  OroMM::VectorArray* const points = blocks();
  if (points != nullptr && !isDense(mask, count)) {
    kept = moveSingle(*points, mask, count - 1);
  } else if (points != nullptr) {
    pointruns::forEachStretch(mask, count - 1, [&](int32_t first, int32_t size) {
      if (first != kept + 1) moveDown(*points, first, kept + 1, size);
      kept += size;
    });
  } else {
    OroVector point;
    for (int32_t i = 1; i < count; ++i) {
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
