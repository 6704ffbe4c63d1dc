// The colours of the point arrays, in memory and in files.

#include <algorithm>

#include "interfaces/IOroPointExtraInfo.h"
#include "orobasictypes/binio.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/pointcolorobserver.h"
#include "orobasictypes/realparray.h"

namespace {

enum ColorFlags : int32_t { kHasColors = 1, kPacked = 2 };

constexpr int32_t colorPiece = 1024;  // colours that are moved at once

// Both sums as they have always been made: the last bits depend on the order.
float grayOfStored(const float color[3]) {
  return static_cast<float>(0.59 * color[1] + 0.3 * color[0] + 0.11 * color[2]);
}

double grayOfRecord(const float color[3]) {
  return 0.3 * color[0] + 0.59 * color[1] + 0.11 * color[2];
}

// Whether so many bytes can still come. An input that does not know its size may go on.
bool canHoldBytes(BinInput& input, int64_t bytes) {
  return input.GetSize() <= 0 || bytes <= input.GetSize() - input.Tell();
}

// Where the size of an input is not known, the room grows as colours come.
int32_t roomFor(BinInput& input, int32_t done, int32_t count) {
  return input.GetSize() > 0 ? count : done + std::min(count - done, std::max(colorPiece, done));
}

// The colours of the places below `limit` that the mask has not; visit(i).
template <class Visit>
bool forEachKept(const BitVector& skipMask, int32_t limit, const Visit& visit) {
  int32_t i = 0;
  while (i < limit) {
    const int32_t next = skipMask.NextSet(i - 1);
    const int32_t end = next < 0 ? limit : std::min(next, limit);
    for (; i < end; ++i) {
      if (!visit(i)) return false;
    }
    ++i;
  }
  return true;
}

int32_t countKept(const BitVector& skipMask, int32_t limit) {
  int32_t kept = 0;
  forEachKept(skipMask, limit, [&kept](int32_t) {
    ++kept;
    return true;
  });
  return kept;
}

}  // namespace

// A published object is everybody's: this array gets one of its own. It is not packed yet, whatever
// the one before was.
bool RealPArray::makeExtraInfo() {
  void* found = nullptr;
  oroGetService(KelCString::borrow(IOroPointExtraInfo::interfaceName()), &found);
  auto* const info = static_cast<IOroPointExtraInfo*>(found);
  if (info == nullptr) return false;
  packed_ = false;
  if (info->refCount() == 0) {
    SetExtraInfo(info);
    return true;
  }
  SetExtraInfo(info->Clone());
  if (extra_ == nullptr) return false;
  extra_->ClearColors();
  extra_->SetCount(0);
  return true;
}

void RealPArray::SetExtraInfo(IOroPointExtraInfo* info) {
  if (info == extra_) return;
  if (info != nullptr) info->addRef();
  dropExtraInfo();
  extra_ = info;
}

IOroPointExtraInfo* RealPArray::TakeExtraInfo() {
  IOroPointExtraInfo* const taken = extra_;
  extra_ = nullptr;
  return taken;
}

void RealPArray::dropExtraInfo() {
  if (IOroPointExtraInfo* const dropped = TakeExtraInfo()) dropped->release();
}

bool RealPArray::HasColors() const { return extra_ != nullptr && extra_->HasColors(); }

bool RealPArray::SetHasColors(bool wanted) {
  if (HasColors() == wanted) return false;
  if (wanted) {
    if (extra_ == nullptr && !makeExtraInfo()) return false;
    extra_->SetCapacity(GetCount());
  } else {
    extra_->ClearColors();
    if (extra_->CanDiscard()) dropExtraInfo();
  }
  return true;
}

bool RealPArray::GetColorF(int32_t i, float out[3]) const {
  if (!HasColors()) return false;
  extra_->GetColorF(i, out);
  return true;
}

bool RealPArray::GetColorD(int32_t i, double out[3]) const {
  if (!HasColors()) return false;
  extra_->GetColorD(i, out);
  return true;
}

bool RealPArray::GetColor(int32_t i, double& r, double& g, double& b) const {
  double color[3];
  if (!GetColorD(i, color)) return false;
  r = color[0];
  g = color[1];
  b = color[2];
  return true;
}

bool RealPArray::SetColor(int32_t i, const float color[3]) {
  if (!needExtraInfo()) return false;
  extra_->SetColorF(i, color);
  return true;
}

bool RealPArray::SetColorNotify(int32_t i, const float color[3]) {
  if (observer_ != nullptr) observer_->ColorChanges(i);
  return SetColor(i, color);
}

bool RealPArray::SetColor(int32_t i, double r, double g, double b) {
  if (!needExtraInfo()) return false;
  const double color[3] = {r, g, b};
  extra_->SetColorD(i, color);
  return true;
}

int32_t RealPArray::AddPointF(const OroPointF& record) {
  const int32_t i = Add(OroVector(record.x, record.y, record.z));
  const float color[3] = {record.r, record.g, record.b};
  if (i != 0 && HasColors()) SetColor(i, color);
  return i;
}

int32_t RealPArray::AddPointD(const OroPointD& record) {
  const int32_t i = Add(OroVector(record.x, record.y, record.z));
  if (i != 0 && HasColors()) SetColor(i, record.r, record.g, record.b);
  return i;
}

bool RealPArray::SetPointF(int32_t i, const OroPointF& record) {
  if (!Set(i, OroVector(record.x, record.y, record.z))) return false;
  const float color[3] = {record.r, record.g, record.b};
  return !HasColors() || SetColor(i, color);
}

bool RealPArray::SetPointD(int32_t i, const OroPointD& record) {
  if (!Set(i, OroVector(record.x, record.y, record.z))) return false;
  return !HasColors() || SetColor(i, record.r, record.g, record.b);
}

void RealPArray::GetPointF(int32_t i, OroPointF& record) const {
  float color[3] = {};
  GetColorF(i, color);
  const OroFloat4 at = GetFloat4(i);
  record = {at.x, at.y, at.z, 1, color[0], color[1], color[2], 1};
}

void RealPArray::GetPointD(int32_t i, OroPointD& record) const {
  double color[3] = {};
  GetColorD(i, color);
  const OroVector at = GetVector(i);
  record = {at.x, at.y, at.z, 1, color[0], color[1], color[2]};
}

void RealPArray::GetPointGrayF(int32_t i, OroPointF& record) const {
  float color[3] = {};
  GetColorF(i, color);
  GetPointF(i, record);
  record.w = static_cast<float>(grayOfRecord(color));
}

void RealPArray::GetPointGrayD(int32_t i, OroPointD& record) const {
  float color[3] = {};
  GetColorF(i, color);
  GetPointD(i, record);
  record.w = grayOfRecord(color);
}

bool RealPArray::ColorsToGray() {
  if (!HasColors()) return false;
  const int32_t count = GetCount();
  for (int32_t i = 1; i <= count; ++i) {
    float color[3];
    extra_->GetColorF(i, color);
    const float gray = grayOfStored(color);
    const float grays[3] = {gray, gray, gray};
    extra_->SetColorF(i, grays);
  }
  return true;
}

bool RealPArray::ScaleColors(float factor) {
  if (!HasColors()) return false;
  const int32_t count = extra_->GetCount();
  for (int32_t i = 0; i < count; ++i) {
    float color[3];
    extra_->GetColorF(i, color);
    for (float& channel : color) channel *= factor;
    extra_->SetColorF(i, color);
  }
  return true;
}

void RealPArray::RemoveColors(int32_t first, int32_t count) {
  if (extra_ != nullptr) extra_->Remove(first, count);
}

void RealPArray::InsertColors(int32_t first, int32_t count) {
  if (extra_ != nullptr) extra_->Insert(first, count);
}

void RealPArray::CompactColors(const BitVector& mask) {
  if (extra_ != nullptr) extra_->Compact(mask);
}

void RealPArray::ReorderColors(const OroMM::IntArray& map, int32_t count) {
  if (extra_ != nullptr) extra_->Reorder(map, count);
}

bool RealPArray::ValidateColors() const { return extra_ == nullptr || extra_->Validate(); }

bool RealPArray::WriteColors(BinOutput& output, int32_t lastIndex,
                             const BitVector* skipMask) const {
  const int32_t flags =
      (HasColors() ? kHasColors : 0) | (extra_ != nullptr && packed_ ? kPacked : 0);
  if (!output.Write(&flags, 1)) return false;
  if ((flags & kHasColors) == 0) return output.IsGood();
  const bool skips = skipMask != nullptr && skipMask->CountSet() > 0;
  const auto limit = static_cast<int32_t>(
      std::clamp<int64_t>(extra_->GetCount(), 0, std::max<int64_t>(int64_t{lastIndex} + 1, 0)));
  const int32_t count = skips ? countKept(*skipMask, limit) : limit;
  if (!output.Write(&count, 1)) return false;
  const bool isPacked = (flags & kPacked) != 0;
  const uint32_t* const whole = isPacked && !skips ? extra_->GetPackedArray() : nullptr;
  if (whole != nullptr) return output.Write(whole, limit) && output.IsGood();
  const BitVector& skipped = skips ? *skipMask : BitVector::Empty();
  return forEachKept(skipped, limit,
                     [&](int32_t i) {
                       if (isPacked) {
                         const uint32_t color = extra_->GetPackedColor(i);
                         return output.Write(&color, 1);
                       }
                       float color[3];
                       extra_->GetColorF(i, color);
                       return output.Write(color, 3);
                     }) &&
         output.IsGood();
}

int32_t RealPArray::ReadColors(BinInput& input) {
  int32_t flags = 0;
  int32_t count = 0;
  if (!input.Read(&flags, 1)) return 0;
  if ((flags & kHasColors) != 0) {
    if (extra_ == nullptr && !makeExtraInfo()) return 0;
    const bool isPacked = (flags & kPacked) != 0;
    const int64_t bytes = isPacked ? sizeof(uint32_t) : 3 * sizeof(float);
    if (!input.Read(&count, 1) || count < 0 || !canHoldBytes(input, count * bytes)) return 0;
    // An object that holds packed colours would round the floats to them.
    if (packed_ && !isPacked) extra_->ClearColors();
    packed_ = isPacked;
    if (!(packed_ ? readPackedColors(input, count) : readFloatColors(input, count))) return 0;
  }
  if (extra_ != nullptr && extra_->GetCount() != GetCount()) extra_->SetCount(GetCount());
  return input.IsGood() ? 1 : 0;
}

bool RealPArray::readFloatColors(BinInput& input, int32_t count) {
  float colors[3 * colorPiece];
  int32_t room = roomFor(input, 0, count);
  extra_->SetCapacity(room);
  for (int32_t done = 0; done < count;) {
    if (done == room) extra_->SetCapacity(room = roomFor(input, done, count));
    const int32_t size = std::min(colorPiece, room - done);
    if (!input.Read(colors, 3 * size)) return false;
    for (int32_t i = 0; i < size; ++i) extra_->SetColorF(done + i, colors + 3 * i);
    done += size;
  }
  return true;
}

bool RealPArray::readPackedColors(BinInput& input, int32_t count) {
  for (int32_t done = 0; done < count || done == 0;) {
    const int32_t room = roomFor(input, done, count);
    extra_->SetCapacity(room);
    uint32_t* const colors = extra_->GetPackedArray();
    if (colors == nullptr && room > 0) return false;
    if (!input.Read(colors + done, room - done)) return false;
    if (room == count) return true;
    done = room;
  }
  return true;
}
