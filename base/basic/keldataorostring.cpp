#include "base/basic/keldataorostring.h"

#include <algorithm>
#include <string_view>

#include "interfaces/IKelDataVisitor.h"
#include "interfaces/IOroDataReceiver.h"

KelDataOroString::KelDataOroString(const char* path, int32_t capacity, const OroString& text,
                                   uint32_t flags)
    : KelDataItem(path, kOroString, flags), capacity_(std::max(capacity, 0)) {
  for (OroString& layer : layers_) store(layer, text);
}

bool KelDataOroString::Accept(IKelDataVisitor* visitor) { return visitor->VisitOroString(this); }

void KelDataOroString::CopyLayer(int32_t from, int32_t to) {
  if (!isLayer(from) || !isLayer(to)) return;
  if (to == 0) {
    Update(layers_[from], nullptr, false);
  } else {
    store(layers_[to], layers_[from]);
  }
}

bool KelDataOroString::LayersDiffer(int32_t a, int32_t b) const {
  return isLayer(a) && isLayer(b) && !(layers_[a] == layers_[b]);
}

void KelDataOroString::Set(const OroString& text) {
  if (!holds(layers_[0], text)) store(layers_[0], text);
  if (!hasFlag(kInitialiseAll)) return;
  for (int32_t layer = 1; layer < kLayers; ++layer) store(layers_[layer], layers_[0]);
}

void KelDataOroString::Update(const OroString& text, IOroDataReceiver* sender, bool force) {
  const bool same = holds(layers_[0], text);
  Set(text);
  if (same && !force) return;
  const Message changed = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t) {
    receiver.OnOroStringChanged(item.path(), static_cast<const KelDataOroString&>(item).layers_[0]);
  };
  deliver({.message = changed, .sender = sender, .force = force, .raisesDepth = false});
}

// Copies the units alone: a borrowed narrow form that comes with a text would outlive it here.
void KelDataOroString::store(OroString& layer, const OroString& text) const {
  const int length = std::min(text.length(), capacity_);
  if (length == 0) {
    layer.assign(OroString::empty());
  } else {
    layer.assign(text.wideText(), length);
  }
}

bool KelDataOroString::holds(const OroString& layer, const OroString& text) const {
  const auto length = static_cast<size_t>(std::min(text.length(), capacity_));
  return std::u16string_view(layer.wideText()) == std::u16string_view(text.wideText(), length);
}
