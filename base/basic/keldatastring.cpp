#include "base/basic/keldatastring.h"

#include <algorithm>
#include <cstring>

#include "interfaces/IKelDataVisitor.h"
#include "interfaces/IOroDataReceiver.h"

KelDataString::KelDataString(const char* path, int32_t capacity, const char* text, uint32_t flags)
    : KelDataItem(path, kString, flags), capacity_(std::max(capacity, 0)) {
  for (KelCString& layer : layers_) store(layer, text);
}

bool KelDataString::Accept(IKelDataVisitor* visitor) { return visitor->VisitString(this); }

void KelDataString::CopyLayer(int32_t from, int32_t to) {
  if (!isLayer(from) || !isLayer(to)) return;
  if (to == 0) {
    Update(layers_[from].c_str(), nullptr, false);
  } else {
    layers_[to] = layers_[from];
  }
}

bool KelDataString::LayersDiffer(int32_t a, int32_t b) const {
  return isLayer(a) && isLayer(b) && std::strcmp(layers_[a].c_str(), layers_[b].c_str()) != 0;
}

void KelDataString::Set(const char* text) {
  store(layers_[0], text);
  if (!hasFlag(kInitialiseAll)) return;
  for (int32_t layer = 1; layer < kLayers; ++layer) layers_[layer] = layers_[0];
}

// The text as given decides: one that is too long counts as a change each time.
void KelDataString::Update(const char* text, IOroDataReceiver* sender, bool force) {
  const bool same = std::strcmp(Get(), text == nullptr ? "" : text) == 0;
  Set(text);
  if (same && !force) return;
  const Message changed = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t) {
    receiver.OnStringChanged(item.path(), static_cast<const KelDataString&>(item).Get());
  };
  deliver({.message = changed, .sender = sender, .force = force});
}

void KelDataString::store(KelCString& layer, const char* text) const {
  if (text == nullptr) text = "";
  const size_t most = static_cast<size_t>(capacity_) + 1;
  const void* const end = std::memchr(text, '\0', most);
  const size_t length = end == nullptr ? most : static_cast<const char*>(end) - text;
  layer.assign(text, static_cast<int>(std::min<size_t>(length, INT32_MAX)));
}
