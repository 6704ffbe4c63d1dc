#include "components/points/pointextrainfo.h"

#include <algorithm>
#include <utility>

#include "components/points/pointcolor.h"

namespace {

// What is no number, and what is below 0, is 0.
uint8_t byteOf(float channel) {
  if (!(channel > 0)) return 0;
  return channel < 1 ? static_cast<uint8_t>(channel * 255.0F + 0.5F) : 255;
}

uint32_t packedOf(const float* color) {
  return PointColor{byteOf(color[0]), byteOf(color[1]), byteOf(color[2])}.packed();
}

void unpack(uint32_t packed, float* color) {
  const PointColor bytes = PointColor::unpacked(packed);
  color[0] = static_cast<float>(bytes.red) / 255.0F;
  color[1] = static_cast<float>(bytes.green) / 255.0F;
  color[2] = static_cast<float>(bytes.blue) / 255.0F;
}

}  // namespace

void PointExtraInfo::SetCapacity(int32_t count) {
  hasColors_ = true;
  if (count > GetCount()) onPlaces([count](auto& places) { places.resize(count); });
}

void PointExtraInfo::ClearColors() {
  floats_.clear();
  packed_.clear();
  isPacked_ = false;
  hasColors_ = false;
}

bool PointExtraInfo::makePlace(int32_t i) {
  if (i < 0 || i == INT32_MAX) return false;
  hasColors_ = true;
  if (i >= GetCount()) onPlaces([i](auto& places) { places.resize(i + 1); });
  return true;
}

void PointExtraInfo::SetColorF(int32_t i, const float* color) {
  if (!makePlace(i)) return;
  if (isPacked_) {
    packed_[i] = packedOf(color);
  } else {
    std::copy_n(color, 3, floats_[i].channels);
  }
}

void PointExtraInfo::SetColorD(int32_t i, const double* color) {
  const float floats[3] = {static_cast<float>(color[0]), static_cast<float>(color[1]),
                           static_cast<float>(color[2])};
  SetColorF(i, floats);
}

void PointExtraInfo::GetColorF(int32_t i, float* color) {
  if (i < 0 || i >= GetCount()) {
    std::fill_n(color, 3, 0.0F);
  } else if (isPacked_) {
    unpack(packed_[i], color);
  } else {
    std::copy_n(floats_[i].channels, 3, color);
  }
}

void PointExtraInfo::GetColorD(int32_t i, double* color) {
  float floats[3];
  GetColorF(i, floats);
  std::copy_n(floats, 3, color);
}

uint32_t PointExtraInfo::GetPackedColor(int32_t i) {
  if (isPacked_ && i >= 0 && i < packed_.count()) return packed_[i];
  float color[3];
  GetColorF(i, color);
  return packedOf(color);
}

bool PointExtraInfo::Equals(IOroPointExtraInfo* other, int32_t count) {
  if (other == nullptr || other->HasColors() != hasColors_) return false;
  for (int32_t i = 1; i <= count && i < std::max(GetCount(), other->GetCount()); ++i) {
    float mine[3];
    float theirs[3];
    GetColorF(i, mine);
    other->GetColorF(i, theirs);
    if (!std::equal(mine, mine + 3, theirs)) return false;
  }
  return true;
}

void PointExtraInfo::CopyColor(int32_t to, int32_t from) {
  if (from < 0 || from >= GetCount() || !makePlace(to)) return;
  onPlaces([=](auto& places) { places[to] = places[from]; });
}

void PointExtraInfo::SetCount(int32_t count) {
  if (!hasColors_) return;
  const int32_t places = count < INT32_MAX ? count + 1 : count;
  onPlaces([=](auto& values) { values.resize(places); });
}

void PointExtraInfo::Remove(int32_t first, int32_t count) {
  onPlaces([=](auto& places) { places.remove(first, count); });
}

void PointExtraInfo::Insert(int32_t first, int32_t count) {
  onPlaces([=](auto& places) { places.insert(first, count); });
}

void PointExtraInfo::Swap(IOroPointExtraInfo* other) {
  if (auto* const same = oroQueryClass<PointExtraInfo>(other)) {
    floats_.swap(same->floats_);
    packed_.swap(same->packed_);
    std::swap(isPacked_, same->isPacked_);
    std::swap(hasColors_, same->hasColors_);
  } else if (other != nullptr) {
    PointExtraInfo mine(*this);
    Assign(other);
    other->Assign(&mine);
  }
}

void PointExtraInfo::Assign(IOroPointExtraInfo* other) {
  if (other == nullptr || other == this) return;
  if (auto* const same = oroQueryClass<PointExtraInfo>(other)) return take(*same);
  ClearColors();
  hasColors_ = other->HasColors();
  floats_.resize(other->GetCount());
  for (int32_t i = 0; i < floats_.count(); ++i) other->GetColorF(i, floats_[i].channels);
}

void PointExtraInfo::take(PointExtraInfo& other) {
  floats_ = other.floats_;
  packed_ = other.packed_;
  isPacked_ = other.isPacked_;
  hasColors_ = other.hasColors_;
}

// What the range names beyond the places is black until somebody sets it.
void PointExtraInfo::Permute(const OroMM::IntArray& index, int32_t first, int32_t last) {
  if (hasColors_ && last >= first) makePlace(last);
  onPlaces([&](auto& places) { places.permute(index, first, last); });
}

void PointExtraInfo::Compact(const BitVector& mask) {
  onPlaces([&](auto& places) { places.compact(mask); });
}

void PointExtraInfo::Reorder(const OroMM::IntArray& map, int32_t count) {
  const int32_t last = count == -1 ? map.Size() - 1 : count;
  onPlaces([&](auto& places) { places.reorder(map, last); });
}

bool PointExtraInfo::Validate() {
  return (isPacked_ ? floats_.count() : packed_.count()) == 0 && (hasColors_ || GetCount() == 0);
}

uint32_t* PointExtraInfo::GetPackedArray() {
  if (!isPacked_) {
    packed_.resize(floats_.count());
    for (int32_t i = 0; i < floats_.count(); ++i) packed_[i] = packedOf(floats_[i].channels);
    floats_.clear();
    isPacked_ = true;
  }
  return packed_.data();
}
