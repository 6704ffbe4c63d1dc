#include "base/basic/keldatafloat.h"

#include <algorithm>

#include "interfaces/IKelDataVisitor.h"
#include "interfaces/IOroDataReceiver.h"

KelDataFloat::KelDataFloat(const char* path, double value, double minimum, double maximum,
                           uint32_t flags)
    : KelDataItem(path, kFloat, flags), minimum_(minimum), maximum_(maximum) {
  std::fill_n(layers_, kLayers, clamp(value));
}

bool KelDataFloat::Accept(IKelDataVisitor* visitor) { return visitor->VisitFloat(this); }

void KelDataFloat::CopyLayer(int32_t from, int32_t to) {
  if (!isLayer(from) || !isLayer(to)) return;
  if (to == 0) {
    Update(layers_[from], nullptr, false);
  } else {
    layers_[to] = layers_[from];
  }
}

bool KelDataFloat::LayersDiffer(int32_t a, int32_t b) const {
  return isLayer(a) && isLayer(b) && layers_[a] != layers_[b];
}

void KelDataFloat::Set(double value) {
  layers_[0] = clamp(value);
  if (hasFlag(kInitialiseAll)) std::fill_n(layers_ + 1, kLayers - 1, layers_[0]);
}

void KelDataFloat::Update(double value, IOroDataReceiver* sender, bool force) {
  const double before = layers_[0];
  Set(value);
  if (layers_[0] == before && !force) return;
  const Message changed = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t) {
    receiver.OnFloatChanged(item.path(), static_cast<const KelDataFloat&>(item).layers_[0]);
  };
  deliver({.message = changed, .sender = sender, .force = force});
}

void KelDataFloat::GetRange(double& minimum, double& maximum) const {
  minimum = minimum_;
  maximum = maximum_;
}
