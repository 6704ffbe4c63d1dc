#include "base/basic/keldataint.h"

#include <algorithm>

#include "interfaces/IKelDataVisitor.h"
#include "interfaces/IOroDataReceiver.h"

KelDataInt::KelDataInt(const char* path, int32_t value, int32_t minimum, int32_t maximum,
                       uint32_t flags)
    : KelDataItem(path, kInt, flags), minimum_(minimum), maximum_(maximum) {
  std::fill_n(layers_, kLayers, clamp(value));
}

bool KelDataInt::Accept(IKelDataVisitor* visitor) { return visitor->VisitInt(this); }

void KelDataInt::CopyLayer(int32_t from, int32_t to) {
  if (!isLayer(from) || !isLayer(to)) return;
  if (to == 0) {
    Update(layers_[from], nullptr, false);
  } else {
    layers_[to] = layers_[from];
  }
}

bool KelDataInt::LayersDiffer(int32_t a, int32_t b) const {
  return isLayer(a) && isLayer(b) && layers_[a] != layers_[b];
}

void KelDataInt::Set(int32_t value) {
  layers_[0] = clamp(value);
  if (hasFlag(kInitialiseAll)) std::fill_n(layers_ + 1, kLayers - 1, layers_[0]);
}

void KelDataInt::Update(int32_t value, IOroDataReceiver* sender, bool force) {
  const int32_t before = layers_[0];
  Set(value);
  if (layers_[0] == before && !force) return;
  const Message changed = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t) {
    receiver.OnIntChanged(item.path(), static_cast<const KelDataInt&>(item).layers_[0]);
  };
  deliver({.message = changed, .sender = sender, .force = force});
}

void KelDataInt::updateEx(int32_t value, int32_t extra) {
  Set(value);
  const Message changed = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t more) {
    receiver.OnIntExChanged(item.path(), static_cast<const KelDataInt&>(item).layers_[0], more);
  };
  deliver({.message = changed, .sender = nullptr, .force = true, .extra = extra});
}

void KelDataInt::GetRange(int32_t& minimum, int32_t& maximum) const {
  minimum = minimum_;
  maximum = maximum_;
}
