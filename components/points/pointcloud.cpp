#include "components/points/pointcloud.h"

#include <algorithm>
#include <cstring>

#include "components/points/pointextrainfo.h"

namespace {

static_assert(sizeof(OroVector) == 3 * sizeof(double));

constexpr int32_t kPiece = 256;  // points that are moved at once

}  // namespace

bool PointCloud::canBeMade() { return OroMM::arrayManager() != nullptr; }

void PointCloud::positions(int32_t first, int32_t count, double* xyz) const {
  constexpr int32_t mask = OroMM::VectorArray::mask;
  const OroMM::VectorArray& points = *points_->Blocks();
  while (count > 0) {
    const int32_t size = std::min(count, OroMM::VectorArray::perBlock - (first & mask));
    const OroVector* const block = points.Block(first >> OroMM::VectorArray::shift);
    if (block != nullptr) {
      std::memcpy(xyz, block + (first & mask), static_cast<size_t>(size) * sizeof(OroVector));
    } else {
      std::fill_n(xyz, int64_t{3} * size, 0.0);
    }
    xyz += int64_t{3} * size;
    first += size;
    count -= size;
  }
}

void PointCloud::colors(int32_t first, int32_t count, PointColor* out) const {
  IOroPointExtraInfo* const info = points_->ExtraInfo();
  const bool isPacked = info != nullptr && points_->HasPackedColors();
  const uint32_t* const packed = isPacked ? info->GetPackedArray() : nullptr;
  const int32_t places = isPacked ? info->GetCount() : 0;
  for (int32_t i = 0; i < count; ++i) {
    const int32_t place = first + i;
    const uint32_t color = place < places    ? packed[place]
                           : info != nullptr ? info->GetPackedColor(place)
                                             : 0;
    out[i] = PointColor::unpacked(color);
  }
}

// The packed colours from a point on, the places being made.
uint32_t* PointCloud::colorRoom(int32_t first, int32_t count) {
  if (points_->ExtraInfo() == nullptr) points_->SetExtraInfo(new PointExtraInfo);
  points_->SetPackedColors(true);
  points_->ExtraInfo()->SetCapacity(first + count);
  return points_->ExtraInfo()->GetPackedArray() + first;
}

bool PointCloud::add(const double* xyz, const PointColor* colors, int32_t count) {
  const int32_t before = this->count();
  if (count < 1) return true;
  if (count > kMostPoints - before) return false;
  if (colors != nullptr && (before == 0 || hasColors())) {
    uint32_t* const room = colorRoom(before + 1, count);
    std::transform(colors, colors + count, room, [](PointColor color) { return color.packed(); });
  }
  OroVector points[kPiece];
  for (int32_t done = 0; done < count;) {
    const int32_t size = std::min(kPiece, count - done);
    const double* const from = xyz + int64_t{3} * done;
    for (int32_t i = 0; i < size; ++i) {
      points[i] = OroVector(from[3 * i], from[3 * i + 1], from[3 * i + 2]);
    }
    if (points_->AddAll(points, size) == 0) return false;
    done += size;
  }
  return true;
}

void PointCloud::reserve(int32_t count) {
  if (count > 0 && count <= kMostPoints) points_->Reserve(count + 1);
}

bool PointCloud::append(const PointCloud& other) {
  const bool colored = (hasColors() || count() == 0) && (other.hasColors() || other.count() == 0);
  const int32_t more = other.count();
  const int32_t before = count();
  if (more > kMostPoints - before) return false;
  if (!colored) dropColors();
  double xyz[3 * kPiece];
  PointColor colors[kPiece];
  for (int32_t done = 0; done < more;) {
    const int32_t size = std::min(kPiece, more - done);
    other.positions(done + 1, size, xyz);
    other.colors(done + 1, size, colors);
    if (!add(xyz, other.hasColors() ? colors : nullptr, size)) return false;
    done += size;
  }
  BitVector selected = other.selection_;
  selected.Shift(before);
  selection_ |= selected;
  decimals = decimals < 0 || other.decimals < 0 ? kShortest : std::max(decimals, other.decimals);
  return true;
}

void PointCloud::own() {
  if (points_->refCount() > 1) points_ = static_cast<OroVectorArray*>(points_->Clone(true));
}

// A spare point at the end, since the last one never stays.
void PointCloud::keep(const BitVector& mask) {
  points_->Add(OroVector());
  points_->Compress(mask);
  points_->CompactColors(mask);
  selection_.Compact(mask);
}

void PointCloud::reorder(const OroMM::IntArray& map) {
  points_->Permute(map, count());
  points_->ReorderColors(map, count());
  selection_.Permute(map);
}
