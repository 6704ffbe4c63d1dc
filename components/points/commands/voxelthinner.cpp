#include "components/points/commands/voxelthinner.h"

#include <cmath>

#include "components/points/commands/pointbounds.h"
#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"
#include "orobasictypes/bitvector.h"

namespace {

constexpr double kFarthest = 4503599627370496.0;  // 2^52 edges: a cube is still a whole number
constexpr uint64_t kFewestPlaces = 1024;
constexpr int64_t kPointsPerLook = 1024;  // points between two looks at the listener

bool isPlace(const double* xyz) {
  return std::isfinite(xyz[0]) && std::isfinite(xyz[1]) && std::isfinite(xyz[2]);
}

}  // namespace

bool VoxelThinner::fits(PointSet& set) const {
  PointBounds bounds;
  bounds.add(set);
  for (int axis = 0; bounds.any() && axis < 3; ++axis) {
    if (!(std::abs(bounds.least()[axis] / edge_) <= kFarthest)) return false;
    if (!(std::abs(bounds.most()[axis] / edge_) <= kFarthest)) return false;
  }
  return true;
}

VoxelThinner::Cell VoxelThinner::cellOf(const double* xyz) const {
  Cell cell;
  for (int axis = 0; axis < 3; ++axis) {
    cell.at[axis] = static_cast<int64_t>(std::floor(xyz[axis] / edge_));
  }
  return cell;
}

double VoxelThinner::distanceOf(const double* xyz, const Cell& cell) const {
  double sum = 0;
  for (int axis = 0; axis < 3; ++axis) {
    const double off = xyz[axis] / edge_ - static_cast<double>(cell.at[axis]) - 0.5;
    sum += off * off;
  }
  return sum;
}

uint64_t VoxelThinner::hashOf(const Cell& cell) const {
  return hash_(static_cast<uint64_t>(cell.at[0]), static_cast<uint64_t>(cell.at[1]),
               static_cast<uint64_t>(cell.at[2]));
}

void VoxelThinner::grow(PointSet& set) {
  std::vector<Slot> old(slots_.empty() ? kFewestPlaces : slots_.size() * 2);
  old.swap(slots_);
  const uint64_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.item == 0) continue;
    int64_t size = 0;
    uint64_t place = hashOf(cellOf(set.run(slot.item - 1, size))) & mask;
    while (slots_[place].item != 0) place = (place + 1) & mask;
    slots_[place] = slot;
  }
}

void VoxelThinner::enter(PointSet& set, const double* xyz, uint32_t item) {
  if ((used_ + 1) * 3 > slots_.size() * 2) grow(set);
  const Cell cell = cellOf(xyz);
  const double distance = distanceOf(xyz, cell);
  const uint64_t hash = hashOf(cell);
  const auto mark = static_cast<uint32_t>(hash >> 32);
  const uint64_t mask = slots_.size() - 1;
  for (uint64_t place = hash & mask;; place = (place + 1) & mask) {
    Slot& slot = slots_[place];
    if (slot.item == 0) {
      slot = {item, mark, distance};
      ++used_;
      return;
    }
    if (slot.mark != mark) continue;
    int64_t size = 0;
    if (cellOf(set.run(slot.item - 1, size)) != cell) continue;
    if (distance < slot.distance) slot = {item, mark, distance};
    return;
  }
}

bool VoxelThinner::find(PointSet& set, BitVector& kept, PointWork& work) {
  const int64_t count = set.count();
  kept.Resize(static_cast<int32_t>(count));
  kept.Zero();
  for (int64_t first = 0, size = 0; first < count; first += size) {
    const double* const xyz = set.run(first, size);
    if (size > kPointsPerLook) size = kPointsPerLook;
    for (int64_t i = 0; i < size; ++i) {
      if (isPlace(xyz + 3 * i)) enter(set, xyz + 3 * i, static_cast<uint32_t>(first + i + 1));
    }
    if (!work.step(first + size, count)) return false;
  }
  for (const Slot& slot : slots_) {
    if (slot.item != 0) kept.Set(static_cast<int32_t>(slot.item));
  }
  slots_ = {};
  used_ = 0;
  return true;
}
